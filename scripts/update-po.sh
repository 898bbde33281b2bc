#!/bin/sh
# Extracts the texts to translate from the code into po/quillon.pot and
# merges them into each language's po/LL.po, for the translators:
#   scripts/update-po.sh
# A text is marked where the code hands it to Traduire, Formater (a text
# with %s placeholders) or N_ (kept, translated where it is shown), and
# where a report's script hands it to T.
set -eu
racine="$(cd "$(dirname "$0")/.." && pwd)"
cd "$racine"
# The sources in a stable order, so that the template only changes with them.
find src -name '*.cc' -o -name '*.h' | LC_ALL=C sort >po/POTFILES
xgettext --from-code=UTF-8 --language=C++ --keyword= --keyword=Traduire --keyword=Formater:1 --keyword=N_ \
  --flag=Formater:1:c-format --package-name=Quillon --msgid-bugs-address= --sort-by-file --add-location=file \
  --files-from=po/POTFILES --output=po/quillon.pot
rm po/POTFILES
# The reports' scripts show their texts through T('...').
xgettext --from-code=UTF-8 --language=JavaScript --keyword= --keyword=T --msgid-bugs-address= --join-existing \
  --add-location=file --output=po/quillon.pot src/report/*.js
sed -i '/^"POT-Creation-Date:/d' po/quillon.pot
for po in po/*.po; do
  msgmerge --quiet --update --backup=none --no-fuzzy-matching --add-location=file "$po" po/quillon.pot
done
