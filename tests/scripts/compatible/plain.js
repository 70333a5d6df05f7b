// A script as people have written them for cscript: it must not notice the difference.
WScript.Echo("Hello", 1, 2.5, "three");
WScript.Echo(true, false, undefined);
WScript.Echo(null);
WScript.Echo([1, 2, 3]);
WScript.Echo(WScript.ScriptName, WScript.Arguments.length);
for (var i = 0; i < WScript.Arguments.length; i++) WScript.Echo("[" + WScript.Arguments(i) + "]");
try {
    throw new Error("thrown");
} catch (error) {
    WScript.Echo(error.message);
}
var dictionary = new ActiveXObject("Scripting.Dictionary");
dictionary.Add("a", "b");
WScript.Echo(dictionary.Item("a"), dictionary.Count);
WScript.Quit(7);
