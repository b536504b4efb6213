#!/bin/sh
# Two clerks at work on one clinic at the same moment, again and again: two-clerks.sh ASLHOST [ROUNDS [ASLTDS]]
# With the trial server ASLTDS they work on it by ODBC, else on the databases' folder.
# The same month exported twice, the same list of new patients confirmed twice, two lists at once. After each round: no
# document in two files that were both told a success, no mark without a file, no patient twice, none lost.
set -e
aslhost=$(realpath "$1")
rounds=${2:-12}
asltds=$3
place=$(mktemp -d)
server=""
trap 'stop; rm -rf "$place"' EXIT
stop() {
    [ -n "$server" ] || return 0
    kill "$server" 2> /dev/null || true
    wait "$server" 2> /dev/null || true
    server=""
}
"$aslhost" --today 2011-04-10 init "$place/fresh" > "$place/init.log"
faults=0
clerks=""
fault() {
    echo "round $round: $1" >&2
    grep -h '"event":"message"' "$place"/[12]/events | cut -c1-400 | tail -n 2 >&2 || true
    faults=$((faults + 1))
}
query() { sqlite3 -cmd ".timeout 5000" "$place/data/Studio0012.sqlite" "$1"; }
renew() {
    stop
    rm -rf "$place/data" "$place/1" "$place/2"
    cp -r "$place/fresh" "$place/data"
    mkdir -p "$place/1/work" "$place/1/out" "$place/2/work" "$place/2/out"
    [ -n "$asltds" ] || return 0
    "$asltds" --data "$place/data" --port 0 --user sa --password trial > "$place/server.log" 2>&1 &
    server=$!
    port=""
    while [ -z "$port" ]; do
        kill -0 "$server" 2> /dev/null || { cat "$place/server.log" >&2; exit 1; }
        [ "$(wc -l < "$place/server.log")" -gt 0 ] || continue # the line may be half written
        port=$(sed -n 's/.*127\.0\.0\.1[:,]* *\([0-9]*\).*/\1/p' "$place/server.log")
    done
}
# clerk NUMBER COMPONENT STEP ...: plays the steps in the background.
clerk() {
    number=$1
    shift
    if [ -n "$asltds" ]; then
        set -- --odbc "Driver={FreeTDS};Server=127.0.0.1;Port=$port;TDS_Version=7.4;ClientCharset=UTF-8;UID=sa;PWD=trial" \
            --clinic 12 --install "$place/data/Installazione" "$@"
    else
        set -- --data "$place/data" "$@"
    fi
    "$aslhost" --today 2011-04-10 --user "UTENTE$number" --work "$place/$number/work" \
        --settings "$place/$number/settings.ini" --json "$@" > "$place/$number/events" 2> "$place/$number/errors" &
    clerks="$clerks $!"
}
both_end() {
    for clerk in $clerks; do wait "$clerk" || fault "a clerk's program failed: $(cat "$place"/[12]/errors)"; done
    clerks=""
}
list() { # list FILE FIRST LAST: patients that the archive does not have, in the Lazio format
    echo "N;Tessera;CF" > "$1"
    i=$2
    while [ "$i" -le "$3" ]; do
        echo "$i;NUOVA$i;;Prova$i;Lia;03/02/1961;;;04/03/2001;;;;VIA ROMA" >> "$1"
        i=$((i + 1))
    done
}
written() {
    count=$(sed -n 's/.*Pazienti scritti: \([0-9]*\).*/\1/p' "$place/$1/events" | tail -n 1)
    echo "${count:-0}"
}
confirm() { # confirm NUMBER FILE
    clerk "$1" ASLImportPatient cboASL=#7 "txtPath=$2" cmdElabora! cboFiltro=#1 cmdSelezionaTutti! cmdConferma!
}

both=0
round=1
while [ "$round" -le "$rounds" ]; do
    renew
    before=$(query "SELECT COUNT(*) FROM Parcella WHERE ElaborataASL <> 0")
    for number in 1 2; do
        clerk $number ASLExport "txtPath=$place/$number/out" cboBranca=1 cboMese=3 numAnno=2011 cmdConferma!
    done
    both_end
    told=$(cat "$place"/[12]/events | grep -c "terminata con successo" || true)
    files=$(ls "$place"/[12]/out/*M.txt 2>/dev/null | wc -l)
    marked=$(query "SELECT COUNT(*) FROM Parcella WHERE ElaborataASL <> 0")
    [ "$told" = "$files" ] || fault "$told runs told a success, $files files were delivered"
    [ "$told" -le 1 ] || fault "both runs sent the month"
    [ "$told" = 0 ] || [ "$marked" -gt "$before" ] || fault "a file and no mark"
    [ "$told" != 0 ] || [ "$marked" = "$before" ] || fault "marks and no file"

    renew
    list "$place/one.txt" 1 150
    for number in 1 2; do confirm $number "$place/one.txt"; done
    both_end
    twice=$(query "SELECT COUNT(*) FROM (SELECT 1 FROM Paziente WHERE NumTesseraSanitaria LIKE 'NUOVA%'
                   GROUP BY NumTesseraSanitaria HAVING COUNT(*) > 1)")
    there=$(query "SELECT COUNT(DISTINCT NumTesseraSanitaria) FROM Paziente WHERE NumTesseraSanitaria LIKE 'NUOVA%'")
    [ "$twice" = 0 ] || fault "$twice patients are in the archive twice"
    [ "$there" = 150 ] || fault "$there of 150 patients are in the archive"
    [ $(($(written 1) + $(written 2))) = 150 ] || fault "$(written 1) and $(written 2) patients told as written of 150"
    [ "$(written 1)" = 0 ] || [ "$(written 2)" = 0 ] || both=$((both + 1))

    renew
    list "$place/one.txt" 1 150
    list "$place/two.txt" 151 300
    confirm 1 "$place/one.txt"
    confirm 2 "$place/two.txt"
    both_end
    there=$(query "SELECT COUNT(*) FROM Paziente WHERE NumTesseraSanitaria LIKE 'NUOVA%'")
    [ "$there" = 300 ] && [ "$(written 1)" = 150 ] && [ "$(written 2)" = 150 ] ||
        fault "two lists: $(written 1) and $(written 2) told, $there of 300 in the archive"
    round=$((round + 1))
done
echo "two clerks, $rounds rounds: $faults faults; in $both rounds both wrote patients of the same list"
[ "$faults" = 0 ]
