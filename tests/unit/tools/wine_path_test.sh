#!/usr/bin/env bash
# What reaches a script of an argument of ./zu run (tools/to-wine-path).
set -u
source "$(dirname "${BASH_SOURCE[0]}")/../../../tools/to-wine-path"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/two words"
touch "$folder/sales.dbf"
inside="Z:${folder//\//\\}"

failed=0
Expect() {
    ZuWinePath "$1"
    [[ $REPLY == "$2" ]] && return
    echo "\"$1\" became \"$REPLY\" instead of \"$2\""
    failed=1
}

Expect "$folder" "$inside"
Expect "$folder/sales.dbf" "$inside\\sales.dbf"
Expect "$folder/two words" "$inside\\two words"
Expect "$folder/new.txt" "$inside\\new.txt"               # to be made in a folder that exists
Expect "$folder>sales" "$inside>sales"                    # a table definition
Expect "$folder/two words>a/b" "$inside\\two words>a/b"
Expect "/nologo" "/nologo"                                # an option, not a path
Expect "$folder/gone/new.txt" "$folder/gone/new.txt"
Expect "sales/orders" "sales/orders"                      # relative paths work as they are
Expect "AMOUNT > /1" "AMOUNT > /1"
Expect "" ""
Expect "-e" "-e"
exit $failed
