' The components as a script uses them. An error of the script itself would end it silently and with success, so its
' last line says that it came to its end.
Option Explicit

Dim done, failed
done = 0
failed = 0

Sub Expect(what, given, expected)
    done = done + 1
    If given <> expected Then
        failed = failed + 1
        WScript.Echo what & ": " & given & " invece di " & expected
    End If
End Sub

Dim names, i, component
names = Array("ASLExport", "ASLPanoramico", "ASLPanoramicoLine", "ExportProgetti", "ASLImportPatient")
For i = 0 To 4
    Set component = CreateObject("VlmASLServicesLib." & names(i))
    Expect names(i), IsObject(component), True
    Expect names(i) & ".Connection", component.Connection Is Nothing, True
Next

Dim record
Set record = CreateObject("VlmASLServicesLib.ASLPanoramicoLine")
record.CodMed = "123"
record.asscf = "NCLMGR70E41G273K"
record.DataRicetta = CDate(40617)
record.CodFarmaco1 = "0239930131"
record.QFarmaco1 = "1"
record.PrescrivibileSSN = True
Expect "CodMed", record.CodMed, "123"
Expect "AssCF", record.AssCF, "NCLMGR70E41G273K"
Expect "DataRicetta", record.DataRicetta, CDate(40617)
Expect "QFarmaco1", record.QFarmaco1, 1
Expect "TypeName(QFarmaco1)", TypeName(record.QFarmaco1), "Integer"
Expect "PrescrivibileSSN", record.PrescrivibileSSN, True
Expect "GetFormattedLine", Len(record.GetFormattedLine()), 76

On Error Resume Next
Err.Clear
record.ReadData
Expect "ReadData", Err.Number, 91
Expect "ReadData.Source", Err.Source, "VlmASLServicesLib"
Expect "ReadData.Description", Len(Err.Description) > 0, True
Err.Clear
record.QFarmaco1 = 40000
Expect "QFarmaco1 = 40000", Err.Number, 6
Err.Clear
Set record.Connection = record
Expect "Connection = record", Err.Number, 13
Err.Clear
record.LookupICD9 1
Expect "LookupICD9", Err.Number, 438
On Error GoTo 0

Dim exporter
Set exporter = CreateObject("VlmASLServicesLib.ASLExport")
On Error Resume Next
Err.Clear
exporter.ViewAsDecoded
Expect "ViewAsDecoded", Err.Number, 450
On Error GoTo 0

If failed > 0 Then
    WScript.Echo "falliti " & failed & " di " & done
    WScript.Quit 1
End If
WScript.Echo "tutto bene: " & done & " prove"
WScript.Quit 0
