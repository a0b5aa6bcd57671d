#!/bin/sh
# A command in place of the program, one in the interpreter, one that is not there; then no command.
set -eu

# A folder in PATH that cannot be searched would give another error.
export PATH=/usr/bin:/bin
"$1" /run:printf '%s,%s\n' one two
"$1" /IN:.. /run:ls alpha.ini '&&' exit 9 /Shell
"$1" /run:no-such-program || echo "exit status $?"
"$1" /shell
