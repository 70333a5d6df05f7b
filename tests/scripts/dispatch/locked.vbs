' A table that another program keeps for itself.
Option Explicit

Dim locked
locked = fact("tables") & ">locked"

HoldExclusively fact("tables") & "\locked.dbf"
Engine.ClearLastError
same DbfCount(locked), -1, "DbfCount of a locked table is -1"
ok InStr(1, Engine.LastError, "locked", 1) > 0, "LastError names the table"
ok DbfOpen(locked) Is Nothing, "DbfOpen of a locked table answers Nothing"
ok DbfSelect(locked) Is Nothing, "DbfSelect of a locked table answers Nothing"
LetGo
same DbfCount(locked), fact("customers"), "when the other program lets go, the table can be read"

finish
