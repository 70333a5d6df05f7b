// Texts in the code page of a table.
var project = new ActiveXObject("Zuengine.Zuproject");
var service = project.DatabaseService;
var files = new ActiveXObject("Scripting.FileSystemObject");
var names = ["typed.dbf", "typed.fpt"];
for (var i = 0; i < names.length; i++)
    files.CopyFile(fact("tables") + "\\" + names[i], fact("scratch") + "\\" + names[i]);
var view = service.OpenTable("DBF|" + fact("scratch"), "typed").Select(null, 0, 0, "");

function put(field, text) {
    try {
        view(field).Value = text;
        return "";
    } catch (error) {
        return error.message;
    }
}

var known = "\u20AC\u00E4\u00DF\u0152\u017E";
view.AddNew();
same(put("TXT", known), "", "characters of the code page are taken");
same(put("NOTE", known + " in a memo"), "", "in a memo too");
ok(view.Update(), "and saved");
same(view("TXT").Value, known, "and read as they were");
same(view("NOTE").Value, known + " in a memo", "from the memo too");

var unknown = ["\u0416", "\u03BB", "a\u4E2D", "\uD83D\uDE00", "\u0081\u0416"];
for (i = 0; i < unknown.length; i++) {
    view.AddNew();
    put("TXT", "before");
    var text = put("TXT", unknown[i]);
    ok(text.indexOf("1252") >= 0 && text.indexOf("TXT") >= 0, "text " + i + " is refused with the code page and the field");
    same(view("TXT").Value, "before", "and the record is as it was");
    ok(put("NOTE", "memo " + unknown[i]).indexOf("1252") >= 0, "a memo with it is refused too");
    view.CancelUpdate();
}
same(view.RecordCount, 1, "nothing else was written");
finish();
