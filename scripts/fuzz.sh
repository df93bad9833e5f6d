#!/usr/bin/env bash
# Builds the fuzz targets and runs each so many seconds, two at a time, from the shipped and the faulty files. Inputs that
# reach something new stay in build/fuzz-corpus, findings in build/fuzz-findings. Exit code 1 if there are any.
# usage: scripts/fuzz.sh [seconds (60) [target ...]]
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

seconds=${1:-60}
[ $# -eq 0 ] || shift
[ $# -gt 0 ] || set -- Profile PartFile SetupFile Numbers Records
# shellcheck disable=SC2086
need $build_packages clang libclang-rt-14-dev python3-minimal
build fuzz "${@/#/fuzz_}"

corpus=build/fuzz-corpus findings=build/fuzz-findings
mkdir -p "$findings"
doing="making the seeds"
for target in "$@"; do mkdir -p "$corpus/$target" "$findings/$target"; done
python3 - "$corpus" "$@" <<'SEEDS'
"""A seed is a file and 128 bytes that choose operations; see fuzz/FuzzInput.h."""
import glob
import os
import random
import sys

corpus, targets = sys.argv[1], sys.argv[2:]
random.seed(1)
ini = glob.glob("parts/*.ini") + glob.glob("tests/data/**/*.ini", recursive=True)
setup = (b"[SETUP]\r\nADDRESS=632\r\nCLOCK=8\r\nDATA=16\r\nLE=32\r\nPART=DEVICE\r\nPINPOSITION00=5\r\nPINPOSITION01=6\r\n"
         b"[MODES]\r\nNAME00=R\r\nVALUE00=20\r\nNAME01=N\r\nVALUE01=4000\r\nOSCIN00=12.8\r\nPINS=32\r\n"
         b"[BURST]\r\nCOUNT=3\r\nCOMMAND00=0\r\nREGISTER00=20\r\nREGISTERNAME00=R\r\nPINS00=0\r\n"
         b"COMMAND01=2\r\nREGISTER01=10\r\nCOMMAND02=1\r\nREGISTER02=0\r\nREGISTERNAME02=\r\nPINS02=32\r\n")
texts = {
    "Profile": [open(f, "rb").read() for f in ini] + [open(ini[0], encoding="latin1").read().encode("utf-16")],
    "PartFile": [open(f, "rb").read() for f in ini]
    + [b"\1" + bytes(random.randrange(256) for _ in range(600)) for _ in range(20)],   # Described: fuzz/PartFileWriter.cpp
    "SetupFile": [setup],
    "Numbers": [b"-12.5E+03", b"&H8000", b"&HFFFFFFFF&", b"TRUE", b" 15 ", b"0.00#;(0.0);\"none\"", b"#,##0.00E+00 %", b"\\x0"],
    "Records": [bytes(random.randrange(256) for _ in range(400)), b"\x52\x03\x78\x02\xf3\x03\x7a\x0b" * 40],
}
for target in targets:
    for number, text in enumerate(texts[target]):
        with open(os.path.join(corpus, target, f"seed{number:02}"), "wb") as out:
            out.write(text + bytes(random.randrange(256) for _ in range(128)))
SEEDS

fuzz() {
    nice build/fuzz/fuzz/"fuzz_$1" -max_total_time="$seconds" -max_len=16384 -timeout=120 -rss_limit_mb=4096 \
        -print_final_stats=1 -artifact_prefix="$findings/$1/" "$corpus/$1" >"$findings/$1.log" 2>&1 || true
    printf '%-10s %9s runs  %4s findings\n' "$1" \
        "$(sed -n 's/^stat::number_of_executed_units: //p' "$findings/$1.log")" \
        "$(find "$findings/$1" -type f ! -name 'slow-unit-*' | wc -l)"
}
export -f fuzz
export seconds corpus findings
doing="fuzzing (logs and inputs in $findings)"
step "Fuzzing each target for $seconds s"
printf '%s\n' "$@" | xargs -P 2 -I{} bash -c 'fuzz {}'
[ -z "$(find "$findings" -mindepth 2 -type f ! -name 'slow-unit-*' -print -quit)" ] && exit 0
grep -hE 'does not hold|SUMMARY|runtime error' "$findings"/*.log || true
exit 1
