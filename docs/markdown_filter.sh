#!/bin/sh
# Doxygen's input filter for the README: a link to one of its own sections or to a file of the
# tree keeps its text and loses its target, which the reference cannot resolve.
exec sed -E -e 's%\]\((#[^)]*|[^):]*)\)%]%g' "$1"
