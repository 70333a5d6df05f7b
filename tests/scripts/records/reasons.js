// The reasons of failures as JScript sees them: in the last error, and in the errors that members of views raise.
var f = new ActiveXObject("ZuDBFFunctions.Functions");
var project = new ActiveXObject("Zuengine.Zuproject");
var table = fact("scratch") + ">customers";

function holds(statement, text, pieces) {
    var lacking = "";
    for (var i = 0; i < pieces.length; i++)
        if (text.toLowerCase().indexOf(pieces[i].toLowerCase()) < 0) lacking += " " + pieces[i];
    ok(lacking === "", statement + (lacking ? " (lacks" + lacking + ": " + text + ")" : ""));
}

function fails(statement, answer, failure, pieces) {
    same(answer, failure, statement);
    holds(statement + " has its reason", project.LastError, pieces);
    same(f.DbfCount(table, "ID = 2"), 1, "then something succeeds");
    same(project.LastErrorCode + project.LastError, "0", "and the reason is not stale");
}

function raises(statement, action, pieces) {
    var message = "";
    try {
        action();
    } catch (error) {
        message = error.message;
    }
    holds(statement + " raises an error that says why", message, pieces);
}

fails("DbfSelect of an unknown field", f.DbfSelect(table, "", ["ID", "NOSUCH"]), null, ["customers", "NOSUCH"]);
fails("DbfCount by an object", f.DbfCount({}), -1, ["folder>table"]);
fails("DbfUpdate without pairs", f.DbfUpdate(table, 1, ["CITY"]), false, ["pairs"]);
fails("DbfUpdate of a key that is not there", f.DbfUpdate(table, -5, ["CITY", "x"]), false, ["customers", "no record", "key -5"]);
fails("DbfUpdate with a text for a number", f.DbfUpdate(table, 1, ["CREDIT", "much"]), false, ["customers", "CREDIT", "a number", "much"]);
fails("DbfDelete of a key that is not there", f.DbfDelete(table, -5), 0, ["customers", "key -5"]);
fails("DbfIndex of an unknown field", f.DbfIndex(table, ["NOSUCH"]), false, ["customers", "NOSUCH"]);
fails("DbfReplace outside of a routine", f.DbfReplace("CITY", "x"), undefined, ["DbfReplace", "DbfProcess"]);
fails("DbfToFile under an unknown format", f.DbfToFile(table, fact("scratch") + "\\x.txt", "", "", 0, null, "Comma"), false, ["export format", "Comma"]);

var view = f.DbfSelect(table, "ID = 1");
raises("an unknown field", function () { view.Item("NOSUCH"); }, ["customers", "NOSUCH"]);
raises("a text for a number", function () { view.Item("CREDIT").Value = "much"; }, ["customers", "CREDIT", "a number", "much"]);
raises("a record that is not there", function () { view.Move(7); }, ["customers", "record 7"]);
view.MoveLast();
view.MoveNext();
raises("a value behind the last record", function () { return view.Item("ID").Value; }, ["customers", "no current record"]);
finish();
