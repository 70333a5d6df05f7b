// Changes of records through views.
var project = new ActiveXObject("Zuengine.Zuproject");
var service = project.DatabaseService;
var database = "DBF|" + fact("scratch");
var table = service.OpenTable(database, "customers");

function failure(action) {
    try {
        action();
        return "(no error)";
    } catch (error) {
        return error.message;
    }
}

var view = table.Select("", 0, 0, "");
var count = view.RecordCount;
var all = table.Select("", 0, 1, "").RecordCount;

// ---- changing ----
var name = view("NAME").Value;
view("NAME").Value = "Changed";
ok(view.IsDirty, "a put makes the record dirty");
same(view("NAME").Value, "Changed", "and shows");
same(view("NAME").OriginalValue, name, "while the table still holds the old value");
same(table.Select("", 1, 0, "")("NAME").Value, name, "as another view shows");
ok(view.Update(), "Update saves it");
ok(!view.IsDirty, "so that nothing waits any more");
same(table.Select("", 1, 0, "")("NAME").Value, "Changed", "and another view shows it");
view("NAME").Value = "Nobody";
view.CancelUpdate();
same(view("NAME").Value, "Changed", "CancelUpdate drops a change");
view("NAME").Value = "Nobody";
view.Move(0);
same(view("NAME").Value, "Changed", "making the record current again drops it too");
ok(failure(function () { view("##RECNO").Value = 3; }).indexOf("RECNO") >= 0, "the record number cannot be changed");
ok(failure(function () { view("NOSUCH").Value = 3; }).indexOf("NOSUCH") >= 0, "an unknown field is named");

// ---- two views that want the same ----
var other = table.Select("", 1, 0, "");
var read = view("NAME").Value;
other("NAME").Value = "Quicker";
ok(other.Update(), "one view changes the field");
view("NAME").Value = read + " too";
ok(!view.Update(), "the other one, which read it before, is not saved");
ok(project.LastError.indexOf("was not saved") > 0, "and the reason is told");
view.Refresh();
same(view("NAME").Value, "Quicker", "Refresh shows what is there now");
view("NAME").Value = "Later";
ok(view.Update(), "after that it can be changed");

// ---- adding ----
ok(view.AddNew(), "AddNew begins a record");
ok(view.IsNew && view.IsDirty, "that is new");
same(view.RecordCount, count, "and not counted");
same(view.AbsolutePosition, count, "behind all others");
view("ID").Value = 987654;
view("NAME").Value = "Newcomer";
ok(view.Update(), "Update saves it");
same(view.RecordCount, count + 1, "and it joins the view");
same(view("##RECNO").Value, all + 1, "with the next number");
var library = new ActiveXObject("ZuDBFFunctions.Functions");
var record = library.DbfVarDeclare(fact("scratch") + ">customers");
record("ID").Value = 987655;
record("NAME").Value = "From a variable";
ok(view.AddNew(record), "AddNew takes the values of a record variable");
same(view("NAME").Value, "From a variable", "by their names");
ok(view.Update(), "and saves them");
view.AddNew();
view("NAME").Value = "Never";
view.CancelUpdate();
same(view.RecordCount, count + 2, "a record that is cancelled never was");
same(table.RecordCount, all + 2, "not in the table either");

// ---- looking for what is new ----
ok(table.OpenIndex(""), "there is an index");
same(table.Select("ID = 987655", 0, 0, "").RecordCount, 1, "the new record is found by its key");

// ---- deleting ----
view.MoveLast();
ok(view.Delete(view.RecordCount - 1), "Delete marks a record");
same(view.RecordCount, count + 1, "which leaves a view that hides deleted ones");
view.Move(3);
var fourth = view("NAME").Value;
view.Delete(0);
same(view.AbsolutePosition, 2, "the position moves up");
same(view("NAME").Value, fourth, "with its record");
view.Move(0);
view("##DELETED").Value = true;
same(view.RecordCount, count - 1, "a put of the mark counts at once");
var marked = table.Select("", 0, 1, "");
same(marked.RecordCount, all + 2, "a view for changing keeps deleted records");
marked.Move(0);
ok(marked("##DELETED").Value && marked.IsDeleted, "and shows their mark");
ok(marked.Undelete(0), "Undelete takes it off");
ok(!marked.Undelete(0), "once");
ok(!marked("##DELETED").Value, "and it is off");

// ---- clones ----
var clone = view.Clone();
clone.MoveLast();
ok(view.AbsolutePosition !== clone.AbsolutePosition, "a clone has its own position");
same(clone.RecordCount, view.RecordCount, "and the same records");
view.Close();
ok(clone.RecordCount > 0, "and outlives the other view");

clone = null;
finish();
