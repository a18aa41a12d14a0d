#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Compiles de_DE.UTF-8 and ru_RU.UTF-8 into $1 for use with LOCPATH.
set -eu
dest=${1:?usage: make-test-locales.sh DIR}
mkdir -p "$dest"
for locale in de_DE ru_RU; do
    [ -f "$dest/$locale.UTF-8/LC_NUMERIC" ] && continue
    # localedef exits 1 on mere warnings about the source; the file check decides.
    localedef -c -i "$locale" -f UTF-8 "$dest/$locale.UTF-8" 2>/dev/null || true
    if [ ! -f "$dest/$locale.UTF-8/LC_NUMERIC" ]; then
        echo "could not compile $locale.UTF-8 (is the 'locales' package installed?)" >&2
        exit 1
    fi
done
