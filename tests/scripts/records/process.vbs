' DbfProcess and DbfReplace over real tables, with an object of the script as the holder of its routines.
Option Explicit

Class Routines
    Public Calls
    Public Note
    Public Function Raise10(percent)
        Calls = Calls + 1
        Raise10 = f.DbfReplace("CREDIT", f.DbfFieldValue(field("CREDIT")) * (100 + percent) / 100)
    End Function
    Public Function NoteNumber()
        Calls = Calls + 1
        Note = Note & f.DbfRecNo() & ":" & engine.CurrentRecord & " "
        NoteNumber = True
    End Function
    Public Function Around()
        Dim nested
        Calls = Calls + 1
        Note = Note & field("ID").Value & "("
        nested = f.DbfProcess(table, "Inner", "ID = 7 OR ID = 8")
        Note = Note & ")" & nested & "," & field("ID").Value & "," & engine.CurrentRecord & " "
        Around = True
    End Function
    Public Function Inner()
        Note = Note & field("ID").Value & " "
        Inner = f.DbfReplace("CITY", "Nested")
    End Function
    Public Function Deletes()
        Calls = Calls + 1
        field("##DELETED").Value = True
        Deletes = engine.CurrentView.Update()
    End Function
    Public Function Leaps()
        Calls = Calls + 1
        Note = Note & field("ID").Value & " "
        engine.CurrentView.MoveNext
        Leaps = True
    End Function
    Public Function Closes()
        Calls = Calls + 1
        open.CloseTable
        Closes = f.DbfReplace("CITY", "Closed")
    End Function
    Public Function Odd()
        Note = TypeName(f.DbfReplace("CITY"))
        Note = Note & " " & TypeName(f.DbfReplace("CITY", "x", "NAME"))
        Note = Note & " " & TypeName(f.DbfReplace("NOSUCH", "x"))
        Note = Note & " " & TypeName(f.DbfReplace("SINCE", "no date"))
        Odd = False
    End Function
    Public Function Arrays()
        Arrays = f.DbfReplace(Array("CITY", "Listed", "ACTIVE", True))
    End Function
End Class

Function field(name)
    Set field = engine.CurrentView(name)
End Function

Dim f, project, engine, table, open, holder
table = fact("scratch") & ">customers"
Set f = CreateObject("ZuDBFFunctions.Functions")
Set project = CreateObject("Zuengine.Zuproject")
Set engine = project.Engine

Sub begin()
    Set holder = New Routines
    Set project.RoutineHolder = holder
End Sub

Function valueOf(id, field)
    valueOf = f.DbfFieldValue(f.DbfLookup(table, "ID = " & id)(field))
End Function

Dim before
begin
before = valueOf(5, "CREDIT") + valueOf(6, "CREDIT")
same f.DbfProcess(table, "Raise10", "ID = 5 OR ID = 6", , , 10), 2, "DbfProcess answers how many records were processed"
same holder.Calls, 2, "the routine ran once for each"
same FormatNumber(valueOf(5, "CREDIT") + valueOf(6, "CREDIT"), 2), FormatNumber(before * 1.1, 2), "DbfReplace has changed the records"

begin
same f.DbfProcess(table, "NoteNumber", "ID = 5 OR ID = 6", , 2), 2, "MaxRecords limits the run"
same holder.Note, "5:1 6:2 ", "record numbers and counts are those of the record in hand"

begin
same f.DbfProcess(table, "Around", "ID = 1 OR ID = 2"), 2, "a routine may process another selection"
same holder.Note, "1(7 8 )2,1,1 2(7 8 )2,2,2 ", "and finds its own record and number again"
same valueOf(7, "CITY"), "Nested", "the inner routine changed its records"

begin
before = f.DbfCount(table)
same f.DbfProcess(table, "Deletes", "ID > 20 AND ID < 25"), before - f.DbfCount(table), "a routine may delete the record in hand"
ok holder.Calls > 0, "of the ones that were there"

begin
f.DbfProcess table, "Leaps", "ID < 7"
same UBound(Split(Trim(holder.Note))) + 1, holder.Calls, "a routine that moves the view on skips records"
ok holder.Calls <= 4, "and the run ends at the end of the view"

begin
Set open = f.DbfOpen(table)
same open.Process("Closes", "ID = 5 OR ID = 6"), 2, "a routine may close the table: the view keeps it"
same valueOf(6, "CITY"), "Closed", "and what it replaces is saved"
ok open.Filter("ID = 5") Is Nothing, "the reference is closed"

begin
same f.DbfProcess(table, "Odd", "ID = 5"), 0, "False from the routine stops before the record counts"
same holder.Note, "Empty Empty Empty Empty", "incomplete pairs, unknown fields and refused values answer Empty"
same valueOf(5, "CITY"), "Closed", "and change nothing"

begin
same f.DbfProcess(table, "Arrays", "ID = 5"), 1, "DbfReplace takes its pairs as an array too"
same valueOf(5, "CITY"), "Listed", "and stores them"

same TypeName(f.DbfReplace("CITY", "Nobody")), "Empty", "DbfReplace outside a routine answers Empty"
engine.ClearLastError
same f.DbfProcess(table, ""), 0, "without a routine name nothing is processed"
same engine.LastErrorCode, &H8004102C, "and the engine is told"
same f.DbfProcess(fact("scratch") & ">nosuch", "Raise10"), 0, "nor is a table that does not exist"
same f.DbfProcess(table, "NoSuchRoutine"), 0, "nor by a routine that does not exist"

finish
