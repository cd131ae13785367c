#!/bin/sh
# Checks this package. In its folder: sh check.sh [CHECKPOINT ...]
# CHECKPOINT is a file with a checkpoint that you were given earlier. Needs coreutils and jq 1.6;
# writes nothing. Each fault is a line; ends with "whole" (0) or "not whole" (1).
set -u
LC_ALL=C
export LC_ALL
tab=$(printf '\t')

hash_of() { sha256sum | cut -c1-64; }

manifests() {
  for list in manifest-sha256.txt tagmanifest-sha256.txt; do
    if ! [ -f "$list" ] || grep -qvE '^[0-9a-f]{64}  [A-Za-z0-9._/-]+$' "$list" ||
      grep -qE '  /|\.\.' "$list"; then
      echo "$list is not there or names what no package has"
      continue
    fi
    sha256sum --strict --quiet -c "$list" 2>&1
  done
  find . ! -type f ! -type d | sed 's/^/neither a file nor a folder: /'
  [ "$(find data -type f | sort)" = "$(cut -c67- manifest-sha256.txt | sort)" ] ||
    echo "the files of data are not those of manifest-sha256.txt"
}

chain() { # chain LOG
  name=$(basename "$1")
  [ "$(tail -c 1 "$1" | od -An -tx1 | tr -d ' ')" = 0a ] || echo "$name does not end a line"
  first=$(head -n 1 "$1" | jq -r '[.kind, .log[0:8]] | join(" ")' 2>/dev/null)
  [ "$first" = "begin $(echo "$name" | cut -c7-14)" ] || echo "$name does not begin its log"
  k=0
  jq -r '"\(.seq)\t\(.prev)"' "$1" 2>/dev/null | while IFS=$tab read -r seq prev; do
    [ "$seq" = "$k" ] && [ "$prev" = "$(head -n "$k" "$1" | hash_of)" ] ||
      echo "$name: line $((k + 1)) does not follow the lines before it"
    k=$((k + 1))
  done
  [ "$(jq -c 1 "$1" 2>/dev/null | wc -l)" = "$(wc -l <"$1")" ] ||
    echo "$name holds a line that cannot be read"
}

blocks() { # blocks CHECKPOINT: log, lines, hash and time, one block a line
  tr -d '\r' <"$1" | sed 's/^\(> \{0,1\}\)*//; s/[ 	]*$//' | awk '
    /^Kelvo seal log checkpoint 1$/ { log_ = n = h = "" }
    /^log: [0-9A-F-]+$/ { log_ = $2 }
    /^lines: [1-9][0-9]*$/ { n = $2 }
    /^sha256: [0-9a-f]+$/ { h = $2 }
    /^at: [0-9TZ:-]+$/ { if (log_ != "" && n != "" && h != "") print log_, n, h, $2 }'
}

checkpoint() { # checkpoint FILE
  found=$(blocks "$1")
  [ -n "$found" ] || echo "$1 holds no checkpoint"
  echo "$found" | while read -r log lines hash at; do
    [ -n "$log" ] || continue
    file=data/logs/seals-$(echo "$log" | cut -c1-8).ndjson
    if ! [ -f "$file" ]; then
      echo "$1: the log $log is not here"
    elif [ "${#lines}" -gt 9 ] || [ "$(wc -l <"$file")" -lt "$lines" ]; then
      echo "$1: the log $log has fewer lines"
    elif [ "$(head -n "$lines" "$file" | hash_of)" != "$hash" ]; then
      echo "$1: the log $log does not begin so"
    else
      late=$(tail -n "+$((lines + 1))" "$file" | jq -r --arg at "$at" 'select(.ts < $at) | .seq' |
        wc -l)
      [ "$late" = 0 ] ||
        echo "note: $1: $late lines of $log are dated before it and were not in it"
    fi
  done
}

decisions() { # decisions LOG
  id=$(basename "$1" | cut -c7-14)
  last=""
  jq -r 'select(.kind == "seal" or .kind == "adopt") | "\(.seq)\t\(.kind)\t\(.run)"' "$1" \
    2>/dev/null | while IFS=$tab read -r seq kind run; do
    case $seq in '' | *[!0-9]*) echo "$id: a line without a number"; continue ;; esac
    line=$(sed -n "$((seq + 1))p" "$1")
    where="$id, line $((seq + 1))"
    record=""
    for each in "data/records/$id/$(printf '%06d' "$seq")"-*; do record=$each; done
    if ! [ -f "$record" ]; then echo "$where: its record is not here"; continue; fi
    of() { printf '%s\n' "$line" | jq -r ".$1"; }
    in_record() { jq -r ".$1" "$record" 2>/dev/null; }
    [ "$(hash_of <"$record")" = "$(of record)" ] || echo "$where: the record is another"
    root=$(printf '%s\n' "$line" | jq -j .payload | hash_of)
    index=$(in_record appIndex)
    prev=$(in_record appPrev)
    [ "$root" = "$(in_record payloadRoot)" ] || echo "$where: what was sealed is not in the record"
    block=$(printf '%s‖%s‖%s' "$index" "$prev" "$root" | hash_of)
    [ "$block" = "$(of block)" ] && [ "$block" = "$(in_record appBlockHash)" ] ||
      echo "$where: the block hash is another"
    printf '%s\n' "$line" | jq -e --slurpfile r "$record" 'if .payload == "" then true else
        .payload | fromjson | to_entries | all(.key as $k | .value == $r[0][$k]) end' \
      >/dev/null 2>&1 || echo "$where: the record does not hold what was sealed"
    [ "$kind" = seal ] || continue
    if [ "$run" != "$last" ]; then
      next=0
      before=$(printf '%064d' 0)
    fi
    [ "$index" = "$next" ] && [ "$prev" = "$before" ] ||
      echo "$where: it does not follow the decision before it"
    last=$run
    next=$((next + 1))
    before=$block
  done
  count=$(jq -r 'select(.kind == "seal" or .kind == "adopt") | 1' "$1" 2>/dev/null | wc -l)
  [ "$(find "data/records/$id" -type f 2>/dev/null | wc -l)" = "$count" ] ||
    echo "$id: there are not as many records as decisions"
}

evidence() {
  jq -r 'select(.payload != null and .payload != "") | .payload | fromjson |
      select(.sourceDb == "control" and .gate_after == 1) | .evidence_root' \
    data/logs/seals-*.ndjson 2>/dev/null | sort -u | while read -r root; do
    case $root in '' | *[!0-9a-f]*) continue ;; esac
    grep -q "^$root  data/evidence/" manifest-sha256.txt ||
      grep -q "^$root,missing," data/evidence.csv ||
      echo "the evidence $root is not here and not told as missing"
  done
}

all() {
  manifests
  for log in data/logs/seals-*.ndjson; do
    chain "$log"
    decisions "$log"
    blocks data/checkpoint.txt | cut -d' ' -f1,2 |
      grep -q "^$(basename "$log" | cut -c7-14)[0-9A-F-]* $(wc -l <"$log")\$" ||
      echo "data/checkpoint.txt does not cover all of $(basename "$log")"
  done
  for folder in data/records/*; do
    [ -d "$folder" ] || continue
    [ -f "data/logs/seals-$(basename "$folder").ndjson" ] || echo "$folder is of no log here"
  done
  for each in data/checkpoint.txt data/earlier-checkpoints/*.txt "$@"; do
    [ "$each" = 'data/earlier-checkpoints/*.txt' ] || checkpoint "$each"
  done
  evidence
}

told=$(all "$@" 2>&1)
[ -z "$told" ] || printf '%s\n' "$told" | tr -d '\000-\011\013-\037\177'
if [ -n "$(printf '%s\n' "$told" | grep -v '^note: ')" ]; then
  echo "not whole"
  exit 1
fi
echo "whole"
