#!/bin/sh
# A month and a quarter of the demo clinic in Sicily, its prescriptions and its projects, a month of the one in Puglia,
# then the patient lists that the authority hands out, and a month over a server, as a clerk works on them: what is
# typed, what the dialogs say, what stands in the files afterwards.
set -e
host=$1
demo=build/demo
studio=12
rm -rf "$demo"
mkdir -p "$demo/lavoro" "$demo/invio"

title() { printf '\n\033[1m== %s\033[0m\n' "$1"; }
show() { # FILE LINES
    printf '\n-- %s (%s righe, le prime %s)\n' "$1" "$(wc -l < "$1" | tr -d ' ')" "$2"
    head -n "$2" "$1" | iconv -f WINDOWS-1252 -t UTF-8 | tr -d '\r'
}
component() { # COMPONENT steps
    "$host" --text --data "$demo/dati" --clinic "$studio" --today 2011-04-10 --work "$demo/lavoro" \
        --settings "$demo/impostazioni.ini" "$@"
}
clinic() { # steps
    component ASLExport "$@"
}

title "I database dimostrativi"
"$host" --today 2011-04-10 init "$demo/dati"

title "Marzo 2011, branca 1: il file mensile M, con i periodi precedenti"
clinic cboBranca=1 cboMese=3 numAnno=2011 chkIncludiPrecedenti=1 txtPath="$demo/invio" cmdConferma!
show "$demo/invio/2010311M.txt" 6

title "Di nuovo: i documenti sono segnati, non c'è più nulla da inviare"
clinic cboBranca=1 cboMese=3 numAnno=2011 chkIncludiPrecedenti=1 cmdConferma!

title "Il file mostrato in forma leggibile"
clinic cboMese=3 numAnno=2011 in:frmSelectFile cmdConferma! end: cmdVisualizza!
show "$demo/lavoro/2010311M.txt.tmp" 16

title "Marzo 2011, branca 2: anomalie, nulla viene inviato"
clinic cboBranca=2 cboMese=3 numAnno=2011 answer:yes cmdConferma!
show "$demo/lavoro/2010311MErr.txt" 8

title "Primo trimestre 2011, branca 1: il file riepilogativo S"
clinic optTipoExport=1 cboBranca=1 cboTrimestre='#0' numAnnoTrimestre=2011 cmdConferma!
show "$demo/invio/2010111S.txt" 3

title "Ricette farmaci di marzo 2011: branca 3, il suo unico medico"
component ASLPanoramico cboBranca=3 dtFromDate=01/03/2011 dtToDate=31/03/2011 txtPath="$demo/invio/ricette.txt" \
    cmdConferma!
show "$demo/invio/ricette.txt" 6

title "Progetti chiusi del primo trimestre 2011, tutti i centri: prima senza l'anno, poi con"
component ExportProgetti cboStatoProgetto='#1' cboDaTrimestre='#0' cboATrimestre='#0' txtPath="$demo/invio" \
    cmdConferma! numAnno=2011 chkVisualizza=1 cmdConferma!
show "$demo/invio/S20110120110100.txt" 6

studio=16
title "In Puglia, marzo 2011, branca 1: una riga per ricetta, e il file subito mostrato"
clinic cboBranca=1 cboMese=3 numAnno=2011 chkVisualizza=1 txtPath="$demo/invio" cmdConferma!
show "$demo/invio/C160201.txt" 3

title "Lo stesso file, aperto più tardi"
clinic cboBranca=1 in:frmSelectFile cmdConferma! end: cmdVisualizza!

title "In Puglia, branca 2: le anomalie sono riportate, ma il file parte e le ricette sono segnate"
clinic cboBranca=2 cboMese=3 numAnno=2011 answer:yes cmdConferma!
show "$demo/lavoro/C160203Err.txt" 8

studio=12
title "L'elenco degli assistiti, con un modello: letto, confrontato con l'archivio; i nuovi importati"
component ASLImportPatient cboASL="Elenco assistiti" txtPath="$demo/dati/Sorgenti/assistiti.txt" cmdElabora! \
    lblConteggio? cboFiltro='#1' lblConteggio? lblSelezionati? cmdConferma!

title "Lo stesso elenco nel formato di Catania: ora sono tutti noti; uno non più in elenco viene revocato"
component ASLImportPatient cboASL=Catania txtPath="$demo/dati/Sorgenti/catania.txt" cmdElabora! cboFiltro='#2' lblConteggio? \
    in:frmRevoca chkRevocato=1 dtDataRevoca=31/03/2011 cboTipoRevocaPaziente='#1' cmdConferma! end: \
    grdList2!1 cmdConferma!

title "Gli esenti per reddito, dal file"
component ASLImportPatient cboImportazione='#1' cboASL='#0' txtPath="$demo/dati/Sorgenti/esenti.txt" cmdElabora! \
    cmdSelezionaTutti! cmdConferma!

title "Gli assistiti dal sistema tessera sanitaria: il PIN non si vede"
component ASLImportPatient cboTipoImportazione='#1' cboSpecialista='#0' \
    in:frmInpsPIN txtConferma=1234567890 cmdConferma! end: cmdElabora! grdList?

title "Gli stessi database su un server, attraverso ODBC: lo stesso mese, lo stesso file"
mkdir -p "$demo/server" "$demo/invio-server"
"${host%/*}/asltds" --data "$demo/server" --port 0 > "$demo/asltds.log" &
server=$!
trap 'kill $server' EXIT
until grep -q : "$demo/asltds.log" 2> /dev/null; do
    kill -0 $server || exit 1
    sleep 0.1
done
text="Driver={FreeTDS};Server=127.0.0.1;Port=$(sed 's/.*://' "$demo/asltds.log");TDS_Version=7.4;ClientCharset=UTF-8"
"$host" --today 2011-04-10 init --odbc "$text;UID=demo"
"$host" --text --odbc "$text;UID=demo;Database=Studio0012" --today 2011-04-10 --work "$demo/lavoro" \
    --settings "$demo/impostazioni.ini" ASLExport cboBranca=1 cboMese=3 numAnno=2011 chkIncludiPrecedenti=1 \
    txtPath="$demo/invio-server" cmdConferma!
cmp "$demo/invio/2010311M.txt" "$demo/invio-server/2010311M.txt" && echo "I due file sono uguali."

printf '\nTutto sta in %s: dati, server, lavoro, invio.\n' "$demo"
