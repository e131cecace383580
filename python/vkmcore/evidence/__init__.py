"""Reports of an installation, and chains of custody."""
