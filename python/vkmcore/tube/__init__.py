"""Curves as tubes: their description, and tightening towards least ropelength."""
