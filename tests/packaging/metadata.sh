# usage: metadata.sh SOURCE_FOLDER     Checks the files by which the desktop and the manual know the program.
set -euo pipefail
cd "$1/packaging"

desktop-file-validate com.ostrel.Tarnwick2x.desktop
appstreamcli validate --no-net com.ostrel.Tarnwick2x.metainfo.xml
bash -n completions/tarnwick-part
xmllint --noout --nonet icons/*.svg

warnings=$(for page in man/*; do
    LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null
done)
if [ -n "$warnings" ]; then
    printf 'man warns:\n%s\n' "$warnings"
    exit 1
fi

# The version stands in three places.
version=$(sed -n 's/^project(tarnwick VERSION \([0-9.]*\).*/\1/p' ../CMakeLists.txt)
grep -q "<release version=\"$version\"" com.ostrel.Tarnwick2x.metainfo.xml
head -n 1 changelog | grep -q "^tarnwick ($version-"
