"""Published tables of knots and links that the package carries.

from vkmcore.reference import find

find("trefoil").ropelength  # 32.7436, length over the tube's radius
"""

from vkmcore.reference.tables import TableEntry, UnknownName, find, knots, large_knots, large_links, links

__all__ = ["TableEntry", "UnknownName", "find", "knots", "large_knots", "large_links", "links"]
