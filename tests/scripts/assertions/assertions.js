
// ---- assertions ----
function ok(condition, statement) {
    if (condition) {
        ok.passed = (ok.passed || 0) + 1;
        WScript.Echo("ok " + statement);
    } else {
        ok.failed = (ok.failed || 0) + 1;
        WScript.Echo("not ok " + statement);
    }
}

function same(actual, expected, statement) {
    if (String(actual) === String(expected)) {
        ok(true, statement);
    } else {
        ok(false, statement + " (is \"" + actual + "\", expected \"" + expected + "\")");
    }
}

// An argument of the form name=value.
function fact(name) {
    for (var i = 0; i < WScript.Arguments.length; i++) {
        var argument = WScript.Arguments(i);
        if (argument.substr(0, name.length + 1) === name + "=") return argument.substr(name.length + 1);
    }
    return "(no fact " + name + ")";
}

function finish() {
    WScript.Echo((ok.passed || 0) + " passed, " + (ok.failed || 0) + " failed");
}
