"""Ropelength-critical shapes of knots and links."""
