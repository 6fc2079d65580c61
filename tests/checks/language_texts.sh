#!/bin/bash
# Every language text has a name in src/base/language_texts.h, every name a text in each language, and the
# program says every one of them by its name. Texts that a table gives out are found as well: the table holds
# the name. The numbers of commands have their names in res/ids.h. Arguments: the build folder, which is not
# looked at, and another folder than . to look into. No text is empty or holds a format, and those of one
# number have the same gaps. The guides in all languages have the same chapters.
set -eu
cd "${2-.}"
header=src/base/language_texts.h
status=0

report() {
    [ -z "$2" ] || {
        echo "$1:" $2
        status=1
    }
}

names=$(sed -nE 's/^ +(k[A-Za-z]+) = ([0-9]+),$/\2 \1/p' "$header" | sort)
numbers=$(cut -d' ' -f1 <<<"$names")
# A header that could not be read would have nothing wrong in it.
[ "$(wc -l <<<"$names")" -gt 100 ] || { echo "$header could not be read"; exit 1; }
report "numbers with two names" "$(uniq -d <<<"$numbers")"

for source in res/language/english.txt res/language/german.txt; do
    texts=$(sed -nE 's/^([0-9]+)=.*/\1/p' "$source" | sort)
    report "twice in $source" "$(uniq -d <<<"$texts")"
    report "names without a text in $source" "$(join -v1 <(echo "$names") <(echo "$texts"))"
    report "texts without a name in $source" "$(comm -13 <(echo "$numbers") <(echo "$texts"))"
    report "empty in $source" "$(grep -nE '^[0-9]+= *$' "$source")"
    # Users may replace any text, so none is a format for printf.
    report "formats in $source" "$(grep -noE '^[0-9]+=.*%[ds]' "$source")"
done
gaps() { sed -nE "s/^([0-9]+)=.*\{$2\}.*/\1/p" "res/language/$1.txt" | sort; }
for gap in 1 2; do
    report "{$gap} in one language only" "$(comm -3 <(gaps english $gap) <(gaps german $gap))"
done

said=$(grep -rhoE 'text::k[A-Za-z]+' src --include='*.cpp' --include='*.h' | sed 's/.*:://' | sort -u)
report "texts that nothing says" "$(comm -23 <(cut -d' ' -f2 <<<"$names" | sort) <(echo "$said"))"
report "said by a bare number" "$(grep -rnE 'LanguageText\([^()]*\b[0-9]' src || true)"
report "commands by a bare number" "$(grep -nE '^ +\{[0-9]+, ' src/ui/window/commands.cpp || true)"
# The program opens the guide at the chapters of the English one, which the German one names beside its own.
chapters=$(sed -nE 's/^## (.*)/\1/p' docs/guide.md | tr 'A-Z ' 'a-z-')
german=$(sed -nE 's/^## .*<a id="(.*)"><\/a>$/\1/p' docs/guide_german.md)
[ "$chapters" = "$german" ] || report "chapters of the guides" "differ"
report "chapters that no guide has" "$(sed -n '/kChapters\[\]/,/^};/p' src/ui/shell/guide.cpp |
    grep -oE 'L"[^"]+"' | tr -d 'L"' | sort -u | comm -23 - <(sort <<<"$chapters"))"
exit $status
