// What JScript does differently: objects by ActiveXObject, numbers that are 64-bit floats, no by-reference variables.
var failures = 0;
function check(what, actual, expected) {
    if (actual === expected) return;
    failures++;
    WScript.Echo(what + " gave " + actual + " (" + typeof actual + "), not " + expected);
}

var s = new ActiveXObject("TarnCom32.StringFunctions");
check("ReverseString", s.ReverseString("abc"), "cba");
check("names without regard to case", s.reversestring("abc"), "cba");
check("a float for a number", s.ReturnStringAfterNthDelimiter("a,b,c", ",", 2.0), ",c");
check("a number for a text", s.ReverseString(123), "321");
check("undefined for a variant", s.IsBlank(undefined), true);

var c = s.CreateCollectionFromString("one!1;two!2");
var all = "";
for (var walk = new Enumerator(c); !walk.atEnd(); walk.moveNext()) all += walk.item();
check("Enumerator", all, "12");

var number = 0;
try {
    c.Item("three");
} catch (error) {
    number = error.number & 0xFFFF;
}
check("the number of an error", number, 5);

var profile = new ActiveXObject("TarnCom32.UserProfile");
profile.ProfileName = "Script";
check("a property", profile.ProfileName, "Script");

if (failures == 0) WScript.Echo("all checks passed");
