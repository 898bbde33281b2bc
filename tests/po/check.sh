#!/bin/sh
# The translations against the code:
#   tests/po/check.sh
# each po/LL.po passes msgfmt --check (its placeholders those of the
# original), and every text that the code hands to Traduire, Formater or N_,
# or a report's script to T, has a translation in each language, none left fuzzy. Skipped (77) where
# gettext's tools are missing.
set -eu
racine="$(cd "$(dirname "$0")/../.." && pwd)"
for outil in msgfmt xgettext msgcmp; do
  command -v "$outil" >/dev/null || { echo "po: $outil missing (gettext): skipped"; exit 77; }
done
d=$(mktemp -d)
trap 'rm -rf "$d"' EXIT
cd "$racine"
find src -name '*.cc' -o -name '*.h' | LC_ALL=C sort >"$d/sources"
xgettext --from-code=UTF-8 --language=C++ --keyword= --keyword=Traduire --keyword=Formater:1 --keyword=N_ \
  --flag=Formater:1:c-format --files-from="$d/sources" --output="$d/code.pot" 2>"$d/xgettext.txt" ||
  { cat "$d/xgettext.txt"; exit 1; }
xgettext --from-code=UTF-8 --language=JavaScript --keyword= --keyword=T --join-existing --output="$d/code.pot" \
  src/report/*.js 2>"$d/xgettext.txt" || { cat "$d/xgettext.txt"; exit 1; }
echec=0
for po in po/*.po; do
  msgfmt --check --output-file=/dev/null "$po" || { echo "po: $po does not pass msgfmt --check"; echec=1; }
  # Each text of the code must be in the catalogue, translated and not fuzzy.
  msgcmp "$po" "$d/code.pot" 2>"$d/msgcmp.txt" ||
    { sed 's/^/  /' "$d/msgcmp.txt"; echo "po: $po lacks translations (scripts/update-po.sh)"; echec=1; }
done
textes=$(($(grep -c '^msgid' "$d/code.pot") - 1))  # less the header
[ "$echec" = 0 ] && echo "po: $(ls po/*.po | wc -l) languages, $textes texts, all translated"
exit "$echec"
