' What zurun gives a VBScript without any object or prefix.
Option Explicit

Dim argument, count, view, customers
customers = fact("tables") & ">customers"

ok Args.Count > 5, "Args counts the arguments"
same Args(0), "tables=" & fact("tables"), "Args(i) is an argument"
same Args.Item(0), Args(0), "Item may be written out"
count = 0
For Each argument In Args
    count = count + 1
Next
same count, Args.Count, "For Each walks over the arguments"
same WScript.Arguments.Count, Args.Count, "WScript.Arguments are the same"

same DbfCount(customers), fact("customers"), "a function without a prefix"
same Functions.DbfCount(customers), fact("customers"), "the same function through Functions"
Set view = DbfSelect(customers, "COUNTRY = 'SE'")
same view.RecordCount, fact("swedish"), "a function that answers an object"
ok DbfOpen(customers).OpenIndex("NAME"), "a member of its result at once"
same DateMask_Custom, -1, "constants of the type library: DateMask_Custom"
same DateMask_yyyymmdd, 3, "constants of the type library: DateMask_yyyymmdd"
same SymbolToRight, 1, "constants of the type library: SymbolToRight"
same UseParentheses, 2, "constants of the type library: UseParentheses"

ok Len(Engine.Version) > 0, "Engine is the project object"
Engine.ClearLastError
same DbfCount(customers, "((("), -1, "a faulty condition"
ok Len(Engine.LastError) > 0, "and its reason in Engine.LastError"

' The script's own routines are the routines of the engine, without any set-up.
Dim seen
Function Each_(step)
    seen = seen + step
    Each_ = True
End Function
same DbfOpen(customers).Process("Each_", "COUNTRY = 'SE'", , 6, 2), 6, "Process finds the script's own function"
same seen, 12, "and calls it for each record"

finish
