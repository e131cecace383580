"""Closed curves: the catalogue, the reader of files and keys, points at equal steps, planar diagrams."""
