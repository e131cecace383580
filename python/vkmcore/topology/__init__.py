"""Knots and links as diagrams: projections, planar diagrams, polynomials, identification, certificates."""
