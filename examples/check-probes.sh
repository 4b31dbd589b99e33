#!/bin/sh
# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0
# Fails a build when a configuration no longer fits its design.
#
# usage: sh check-probes.sh FOLDER...
#
# Checks the .tarn files of each folder against the design of the project file beside them. Prints
# all findings. With the variable SARIF_FOLDER set, it gets a SARIF file for each folder with
# findings. The exit code is 0 when all is well, 1 for findings, 2 when something cannot be read.
set -u

result=0
for folder; do
    tarn check "$folder"/*.tarn
    code=$?
    if [ "$code" -eq 1 ] && [ -n "${SARIF_FOLDER-}" ]; then
        tarn check --format sarif -o "$SARIF_FOLDER/$(basename -- "$folder").sarif" \
            "$folder"/*.tarn
    fi
    [ "$code" -le "$result" ] || result=$code
done
exit "$result"
