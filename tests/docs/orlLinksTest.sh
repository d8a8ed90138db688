#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Copyright Contributors to the orlCore project
#
# orlLinksTest.sh SOURCES: every file that a text links to exists.
set -euo pipefail
cd "$1"
failed=0
count=0
for text in *.md docs/*.md fuzz/*.md; do
    while read -r target; do
        count=$((count + 1))
        [ -e "$(dirname "$text")/$target" ] || { echo "$text links to $target"; failed=1; }
    done < <(grep -oE '\]\([^)#]+' "$text" | sed 's/^](//')
done
[ "$count" -gt 20 ] || { echo "only $count links were found"; failed=1; }
exit "$failed"
