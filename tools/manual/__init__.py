"""The manual: docs/ as web pages and as a help file."""
