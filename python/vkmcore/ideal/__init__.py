"""Ropelength-critical shapes of knots and links: `idealize`, and the record `IdealShape` that it returns."""

from __future__ import annotations

from typing import TYPE_CHECKING

if TYPE_CHECKING:
    from vkmcore.ideal.search import idealize as idealize
    from vkmcore.ideal.shape import IdealShape as IdealShape

__all__ = ["IdealShape", "idealize"]

_MODULE_OF = {"IdealShape": "vkmcore.ideal.shape", "idealize": "vkmcore.ideal.search"}


def __getattr__(name: str) -> object:
    if name in _MODULE_OF:
        from importlib import import_module

        return getattr(import_module(_MODULE_OF[name]), name)
    raise AttributeError(f"module {__name__!r} has no attribute {name!r}")
