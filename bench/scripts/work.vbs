' work.vbs JOB TIMES ARGUMENTS...: one job of the measurements, TIMES times; prints its result. "{}" in an argument stands
' for the number of the turn, from 0.
Option Explicit
Dim turn, result
For turn = 0 To CLng(Args(1)) - 1
    Select Case Args(0)
        Case "count": result = DbfCount(Word(2), "COUNTRY = 'SE' AND AMOUNT > 15000")
        Case "lookup": result = Lookups(Word(2), CLng(Args(3)), CLng(Args(4)))
        Case "calls": result = Calls(Word(2), CLng(Args(3)), CLng(Args(4)))
        Case "add": result = Adds(Word(2), CLng(Args(3)), CLng(Args(4)))
        Case "update": result = Updates(Word(2), CLng(Args(3)), CLng(Args(4)))
        Case "pack": Need DbfCleanup(Word(2)): result = DbfCount(Word(2))
        Case "index": Need DbfIndex(Word(2), Array("CUSTOMER")): result = 0
        Case "copy": result = Copy(Word(2), Word(3))
        Case "append": MakeTable Word(2), Word(3): result = Append(Word(2), Word(3))
        Case "export-delimited": Need DbfToDel(Word(2), Word(3)): result = 0
        Case "export-fixed": Need DbfToFix(Word(2), Word(3)): result = 0
        Case "import-delimited": MakeTable Word(2), Word(4): result = Import(True, Word(3), Word(4))
        Case "import-fixed": MakeTable Word(2), Word(4): result = Import(False, Word(3), Word(4))
        Case Else: WScript.StdErr.WriteLine "no job " & Args(0): Quit 64
    End Select
Next
Echo result

Function Word(number)
    Word = Replace(Args(number), "{}", turn)
End Function

Sub Need(done)
    If Not done Then Quit 1
End Sub

' An empty table with the fields of another one and without an index.
Sub MakeTable(model, table)
    Dim service, place
    place = InStrRev(table, "\")
    Set service = CreateObject("Zuengine.Zuproject").DatabaseService
    service.CreateTable "DBF|" & Left(table, place - 1), Mid(table, place + 1), service.OpenTable("DBF|" & model, "").Layout, Nothing
End Sub

Function Copy(source, target)
    Dim rows, added
    Need DbfToDbf(source, target, , , , rows, added)
    Need rows = added
    Copy = added
End Function

Function Append(source, target)
    Dim rows, added
    Need DbfFromDbf(target, source, , , , , rows, added)
    Need rows = added
    Append = added
End Function

Function Import(delimited, file, table)
    Dim rows, added
    If delimited Then Need DbfFromDel(table, file, , , , rows, added) Else Need DbfFromFix(table, file, , , , rows, added)
    Need rows = added
    Import = added
End Function

Function NextKey(key, records)
    NextKey = (key - 1 + 7919) Mod records + 1
End Function

Function Lookups(table, records, count)
    Dim number, key, view, sum
    key = 1
    For number = 1 To count
        key = NextKey(key, records)
        Set view = DbfLookup(table, key)
        If view.RecordCount > 0 Then sum = sum + CLng(view("QTY").Value)
    Next
    Lookups = sum
End Function

' What Lookups does but for the lookup: what a script pays for its own steps and its calls of objects. The function that is called
' has as many arguments and next to nothing to do.
Function Calls(table, records, count)
    Dim number, key, view, sum, held, answer
    Set held = DbfLookup(table, 1)
    key = 1
    For number = 1 To count
        key = NextKey(key, records)
        answer = Descend(key, "")
        Set view = held
        If view.RecordCount > 0 Then sum = sum + CLng(view("QTY").Value)
    Next
    Calls = sum
End Function

Function Adds(table, records, count)
    Dim values, number
    Set values = DbfVarDeclare(table)
    For number = 0 To count - 1
        values("ID").Value = records + 1 + number
        values("CUSTOMER").Value = "Ada Newcomer"
        values("COUNTRY").Value = "SE"
        values("ORDERED").Value = #2024-05-17#
        values("AMOUNT").Value = number / 100
        values("QTY").Value = number Mod 500
        values("PAID").Value = True
        values("RATE").Value = 1.25
        values("NOTE").Value = "Leave the parcel with the neighbours."
        values("CODE").Value = "ABCDEFGH"
        Need DbfAddNew(table, values)
    Next
    Adds = count
End Function

Function Updates(table, records, count)
    Dim number, key, done
    key = 1
    For number = 1 To count
        key = NextKey(key, records)
        If DbfUpdate(table, key, Array("AMOUNT", 1234.56)) Then done = done + 1
    Next
    Updates = done
End Function
