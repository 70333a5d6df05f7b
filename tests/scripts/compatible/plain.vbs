' A script as people have written them for cscript: it must not notice the difference.
Option Explicit
Dim argument, dictionary, key, regular, match, number

WScript.Echo "Hello", 1, 2.5, "three"
WScript.Echo ""
WScript.Echo True, False, Empty
WScript.Echo Null
WScript.Echo DateSerial(2026, 11, 21), TimeSerial(14, 30, 0)
WScript.Echo CCur(12.5), CDbl(1) / 3, 1000000, -0.5
WScript.Echo WScript.ScriptName
WScript.Echo WScript.Arguments.Count, WScript.Arguments.length
For argument = 0 To WScript.Arguments.Count - 1
    WScript.Echo "[" & WScript.Arguments(argument) & "]"
Next
WScript.Echo WScript.Arguments(1), WScript.Arguments.Item(0)

Set dictionary = CreateObject("Scripting.Dictionary")
dictionary("one") = 1
dictionary("two") = 2
For Each key In dictionary.Keys
    WScript.Echo key, dictionary(key)
Next

On Error Resume Next
Err.Raise 1234, "source", "description"
WScript.Echo Err.Number, Err.Description
Err.Clear
WScript.Echo WScript.Arguments(99)
WScript.Echo (Err.Number <> 0)
On Error Goto 0

number = Square(12)
WScript.Echo "square", number
WScript.Quit number Mod 100

Function Square(x)
    Square = x * x
End Function
