#!/bin/sh
# Shows a file after one edit of each kind, then lets an edit fail.
set -eu

file=$(mktemp)
trap 'rm -f "$file"' EXIT
printf '; kept\n[Server]\r\nname = alpha\n\n[Client]\nPort=1' >"$file"
"$1" "$file" server Name beta
"$1" "$file" Client Retries 3
"$1" "$file" Log Level 'very loud'
cat "$file"
"$1" no-such-folder/x.ini Log Level low
