// lookup.js TIMES TABLE RECORDS COUNT [calls]: COUNT lookups by key, TIMES times; prints the sum of a field. With "calls" it does all of
// that but for the lookups, as in work.vbs.
function nextKey(key, records) {
    return (key - 1 + 7919) % records + 1;
}

function lookups(table, records, count) {
    var sum = 0, key = 1;
    for (var number = 0; number < count; number++) {
        key = nextKey(key, records);
        var view = DbfLookup(table, key);
        if (view.RecordCount > 0) sum += Number(view("QTY").Value);
    }
    return sum;
}

function calls(table, records, count) {
    var sum = 0, key = 1, held = DbfLookup(table, 1);
    for (var number = 0; number < count; number++) {
        key = nextKey(key, records);
        var answer = Descend(key, "");
        var view = held;
        if (view.RecordCount > 0) sum += Number(view("QTY").Value);
    }
    return sum;
}

var sum = 0;
for (var turn = 0; turn < Number(Args(0)); turn++) {
    sum = (Args.Count > 4 ? calls : lookups)(Args(1), Number(Args(2)), Number(Args(3)));
}
Echo(sum);
