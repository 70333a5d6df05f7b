' Record variables and descending values.
Option Explicit

Dim f, customers, record, copy
Set f = CreateObject("ZuDBFFunctions.Functions")
customers = fact("tables") & ">customers"

Set record = f.DbfVarDeclare(customers)
ok Not record Is Nothing, "DbfVarDeclare makes a record variable"
same record.Fields.Count, 10, "with the fields of the table"
record("NAME").Value = "Test & Söhne"
record("ID").Value = 17
record("SINCE").Value = DateSerial(2026, 11, 21)
record("ACTIVE").Value = True
same record("NAME").Value, "Test & Söhne", "a text is kept"
same record("ID").Value, 17, "a number is kept"
same CDbl(record("SINCE").Value), CDbl(DateSerial(2026, 11, 21)), "a date is kept"
ok record("ACTIVE").Value, "a truth value is kept"
copy = f.DbfVarReset(record)
ok IsEmpty(copy), "DbfVarReset answers Empty"
same f.DbfFieldValue(record("NAME")), "", "and clears the texts"
same f.DbfFieldValue(record("ID")), 0, "and the numbers"
ok f.DbfVarDeclare(fact("tables") & ">nosuch") Is Nothing, "DbfVarDeclare of a missing table answers Nothing"

ok f.Descend("ABC") <> "ABC", "Descend turns a text round"
ok f.Descend("A") > f.Descend("B"), "so that its order is the other way round"
ok CDbl(f.Descend(1)) > CDbl(f.Descend(2)), "as that of numbers is"

finish
