// Formats and text files as JScript uses them.
var f = new ActiveXObject("ZuDBFFunctions.Functions");
var fso = new ActiveXObject("Scripting.FileSystemObject");
var folder = fact("scratch");
var source = folder + ">customers";
var file = folder + "\\js.txt";

function content(path) {
    return fso.OpenTextFile(path).ReadAll();
}

var control = new ActiveXObject("ZuDBFFunctions.ZuDbfControl");
same(control.ExportFormats.Count, 2, "a fresh control has two export formats");
same(control.ImportFormats.Item(2).Name, "Fixed", "and two import formats");
control.ExportFormats.AddFormat("Semicolon", 1);
var format = control.ExportFormats.Item("semicolon");
format.Separator = ";";
format.NumberSignPosition = 1;
ok(f.DbfToFile(source, file, "ID <= 2", "ID,COUNTRY", 0, control, "Semicolon"), "a format is handed over with its control");
ok(/^1;"[A-Z]*"\r\n2;"[A-Z]*"\r\n$/.test(content(file)), "and used");
var names = "";
for (var walk = new Enumerator(control.ExportFormats); !walk.atEnd(); walk.moveNext()) names += walk.item().Name + " ";
same(names, "Delimited Fixed Semicolon ", "an Enumerator walks over the formats");
format.DateFormat = 8;
same(format.DateFormat, 3, "an arrangement out of range is ignored");
format.DateFormatMask = "dd. mmmm yyyy";
same(format.DateFormat, -1, "a mask of one's own is custom");
format.LengthOfDouble = 0;
same(format.LengthOfDouble, 20, "a length of nothing is ignored");
var number = 0;
try {
    control.ImportFormats.AddFormat("FIXED");
} catch (error) {
    number = error.number & 0xFFFF;
}
same(number, 457, "a name that is taken is error 457");
ok(f.DbfToDel(source, file, "ID = 1"), "arguments may be left out at the end");
finish();
