' Adding, updating, deleting, undeleting and packing records of real tables.
Option Explicit

Dim f, engine, table, values, count
table = fact("scratch") & ">customers"
Set f = CreateObject("ZuDBFFunctions.Functions")
Set engine = CreateObject("Zuengine.Zuproject").Engine
count = f.DbfCount(table)

Set values = f.DbfVarDeclare(table)
values("ID").Value = 90001
values("NAME").Value = "Newcomer & Sons"
values("COUNTRY").Value = "SE"
values("SINCE").Value = DateSerial(2026, 11, 21)
values("CREDIT").Value = 12.5
values("ACTIVE").Value = True
same f.DbfAddNew(table, values), True, "DbfAddNew adds a record from a record variable"
same f.DbfCount(table), count + 1, "the table has one more"
same f.DbfFieldValue(f.DbfLookup(table, 90001)("NAME")), "Newcomer & Sons", "and the index finds it"
same f.DbfConditionalAddNew(table, values, 90001), False, "DbfConditionalAddNew adds nothing where the key exists"
same f.DbfConditionalAddNew(table, values, "ID = 90001"), False, "nor where the condition is met"
same f.DbfCount(table), count + 1, "the table is unchanged"
values("ID").Value = 90002
same f.DbfConditionalAddNew(table, values, 90002), True, "a key that does not exist is added"
values("ID").Value = 90003
same f.DbfConditionalAddNew(table, values, "ID = 90003"), True, "and a condition that no record meets"
same f.DbfCount(table), count + 3, "each once"
same f.DbfAddNew(fact("scratch") & ">nosuch", values), False, "a table that does not exist takes nothing"

same f.DbfUpdate(table, 90001, Array("CITY", "Malmö", "CREDIT", 99.25)), True, "DbfUpdate changes the record of a key"
same f.DbfFieldValue(f.DbfLookup(table, 90001)("CREDIT")), 99.25, "with all its pairs"
same f.DbfUpdate(table, 90001, Array("NAME", "a", "CONTACT", "b", "STREET", "c", "POSTCODE", "d", "CITY", "e", "CREDIT", 1)), True, "six pairs update six fields"
same f.DbfLookup(table, 90001)("STREET").Value & f.DbfLookup(table, 90001)("CITY").Value, "ce", "one as well as the other"
same f.DbfUpdate(table, 99999999, Array("CITY", "x")), False, "a key that matches nothing is False"
same f.DbfUpdate(table, 90001, Array("NOSUCH", "x")), False, "so is an unknown field"
same f.DbfUpdate(table, 90001, Array("CITY", "kept out", "SINCE", "no date")), False, "and a value that the field refuses"
same f.DbfLookup(table, 90001)("CITY").Value, "e", "then nothing is saved"
engine.ClearLastError
same f.DbfUpdate(table, 90001, Array("CITY")), False, "a list without whole pairs is False"
same engine.LastErrorCode, &H80041031, "and reported"
same f.DbfModify(table, table), False, "DbfModify is not provided"
same engine.LastErrorCode, &H8004103C, "and says so"

same f.DbfDelete(table, 90003), 1, "DbfDelete deletes one record by its key"
same f.DbfDelete(table, 90003), 0, "which is gone then"
same f.DbfDelete(table, "ID > 90000", True, 0), 2, "without a limit all that meet a condition go"
same f.DbfCount(table), count, "three fewer in all"
same f.DbfUndelete(table, "ID = 90002"), True, "DbfUndelete brings records back"
same f.DbfCount(table, "ID = 90002"), 1, "those that meet the condition"
same f.DbfCount(table, "ID > 90000"), 1, "and no others"
same f.DbfUndelete(table), True, "without a condition"
ok f.DbfCount(table) > count + 3, "all come back"
same f.DbfDelete(table, "ID <= 100", , 0), 100, "one hundred are deleted"
values = Empty
same f.DbfCleanup(table), True, "DbfCleanup removes what is deleted"
same f.DbfUndelete(table), True, "after it there is nothing to bring back"
same f.DbfCount(table, "ID <= 100"), 0, "the records are gone"
same f.DbfLookup(table, 101)("ID").Value, 101, "and the index is in order"
same f.DbfCleanup(fact("scratch") & ">nosuch"), False, "a table that does not exist is False"

finish
