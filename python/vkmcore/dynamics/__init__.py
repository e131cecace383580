"""Vortex filaments in time: runs, scenes, trajectories."""
