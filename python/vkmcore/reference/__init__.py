"""Published tables of knots and links that the package carries."""
