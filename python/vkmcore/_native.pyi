# Types of the extension module. Made by tools/make_stubs.py from the built module; do not edit.
"""
VKMcore Bindings
"""
from __future__ import annotations
import typing
__all__: list[str] = ['list_bindings']

def list_bindings(pattern: typing.Any=None, include_private: bool=False) -> dict[typing.Any, typing.Any]:
    """
    Return a dictionary of exported names in this module.
    
    Args:
        pattern (str|None): optional case-insensitive substring filter.
        include_private (bool): include names beginning with '_' if True.
    
    Returns: dict with keys: 'functions', 'classes', 'attributes', and 'counts'.
    Also sets module __all__ = functions + classes (public names).
    """
