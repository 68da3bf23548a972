#!/usr/bin/env bash
# Packs what linking the programs again needs, with a script that does it: Qt's licence wants that users can do so with
# a Qt of their own. To be run in the build folder.
#   relinkable.sh <zip> <program>...
set -euo pipefail
zip=$1
shift
folder=relink
rm -rf $folder
mkdir $folder

# The last command of each is the link; of its words, the files of this build are packed, those of the libraries stay
# outside.
{
    echo '#!/bin/sh'
    echo '# Links the programs anew. LIBRARIES is the folder that packaging/windows/libraries.sh filled, or one like it.'
    echo 'set -e'
    # shellcheck disable=SC2016 # for the script that is written
    echo ': "${LIBRARIES:?}"'
    for program in "$@"; do
        ninja -t compdb -x | python3 -c '
import json, re, sys
program, libraries = sys.argv[1:]
link = [entry["command"] for entry in json.load(sys.stdin) if entry["output"].endswith("/" + program + ".exe")][0]
link = re.search(r"\S*g\+\+\S* .*?-o \S+\.exe.*?(?= && |$)", link.replace("\n", " ")).group(0)
print(link.replace(libraries, "$LIBRARIES"))' "$program" "$SCHEDULER_WINDOWS_LIBRARIES"
    done
} >$folder/relink.sh
chmod +x $folder/relink.sh
tr ' ' '\n' <$folder/relink.sh | sort -u | while read -r word; do
    if [[ $word != /* && $word != *.exe && -f $word ]]; then cp --parents "$word" $folder; fi
done
(cd $folder && zip -qr "../$zip" .)
rm -rf $folder
