"""Drawing. Needs matplotlib, the extra `plot`."""
