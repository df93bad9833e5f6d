# usage: installed-files.sh BUILD_FOLDER SOURCE_FOLDER
# Installs into an empty root, compares with the list, and follows the links of the documents.
set -euo pipefail
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT

DESTDIR=$root cmake --install "$1" --prefix /usr >/dev/null

# A line "FOLDER < PATTERN" of the list stands for the files of the sources that match.
cd "$2"
while read -r path sign pattern; do
    case $path$sign in
        '' | '#'*) ;;
        *'<') for file in $pattern; do [ ! -e "$file" ] || echo "$path/${file##*/}"; done ;;
        *) echo "$path" ;;
    esac
done <tests/packaging/installed-files.txt | LC_ALL=C sort >"$root/expected"

(cd "$root" && find . ! -type d ! -path ./expected -printf '%m %P\n') | LC_ALL=C sort -k 2 >"$root/found"
sed -i '/ found$/d' "$root/found"
diff -u "$root/expected" <(cut -d ' ' -f 2 "$root/found")
wrong=$(awk '$1 != ($2 ~ /^usr\/bin\// ? 755 : 644)' "$root/found")
[ -z "$wrong" ] || { printf 'wrong modes:\n%s\n' "$wrong"; exit 1; }
cd "$root/usr/share/doc/tarnwick"
grep -o '](\([^):]*\))' -r --include='*.md' . | sed 's/](\([^)#]*\).*)/\1/' | while IFS=: read -r page link; do
    [ -e "$(dirname "$page")/$link" ] || { echo "$page links to $link, which isn't installed"; exit 1; }
done
grep -qx 'Exec="/usr/bin/tarnwick"' "$root/usr/share/dbus-1/services/com.ostrel.Tarnwick2x.service"
