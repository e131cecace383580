"""From knots to masses."""
