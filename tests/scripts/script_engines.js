// Finds what the JScript of this system lacks, and prints a list: an empty one on Windows. docs/script-engines.md has the
// same list, with what to write instead; the checks compare the two.
var checks = 0, found = "|";
function check(name, good) {
    checks++;
    WScript.Echo((good ? "ok " : "not ok ") + name);
}
var files = new ActiveXObject("Scripting.FileSystemObject");
var folder = files.GetParentFolderName(WScript.ScriptFullName);
var page = files.OpenTextFile(folder + "\\..\\..\\docs\\script-engines.md").ReadAll();
page = page.substr(page.indexOf("## JScript"));

// `text` is an expression that is true where it works; what throws does not work.
function about(name, text) {
    var holds = false;
    try {
        holds = eval(text) === true;
    } catch (e) {
    }
    if (holds) return;
    WScript.Echo("lacks: " + name);
    found += name + "|";
    check("the page tells of: " + name, page.indexOf("| " + name + " |") >= 0);
}
var modified = files.GetFile(WScript.ScriptFullName).DateLastModified;
var dictionary = new ActiveXObject("Scripting.Dictionary");
dictionary.Add("a", 1);
dictionary.Add("b", 2);
var clock = new ActiveXObject("KWOUtil.KWOTimer");
clock.TimerEvents = { Tick: function (sender) { throw new Error(77, "x"); } };
function thrown(value) {
    try {
        throw value;
    } catch (e) {
        return e;
    }
}
function raised(action) {
    try {
        action();
    } catch (e) {
        return e.number & 0xFFFF;
    }
    return 0;
}

about("`getVarDate`", "typeof new Date().getVarDate() == 'date'");
about("`new Date` of an object's date", "new Date(modified).getFullYear() > 2000");
about("`typeof` of an object's date", "typeof modified == 'date'");
about("an object's date joined to a text", "('' + modified).length > 5");
about("differences of an object's dates", "modified - modified === 0");
about("`Date.parse`", "new Date(Date.parse('November 21, 2026 14:05:09')).getHours() == 14");
about("parts of dates", "new Date(2026, 10, 21).getDay() == 6 && new Date(2026, 0, 32).getMonth() == 1");
about("`toLocaleString` of dates", "new Date().toLocaleString().length > 5 && new Date().toLocaleTimeString().length > 3");
about("`Enumerator` of a dictionary", "(function () { for (var e = new Enumerator(dictionary), t = ''; !e.atEnd(); e.moveNext()) t += e.item(); return t; })() == 'ab'");
about("`Enumerator` of files", "!new Enumerator(files.GetFolder(folder).Files).atEnd()");
about("`VBArray`", "new VBArray(dictionary.Keys()).toArray().join() == 'a,b'");
about("`VBArray.getItem`, `ubound`", "new VBArray(dictionary.Keys()).getItem(1) == 'b' && new VBArray(dictionary.Keys()).ubound() == 1");
about("`GetObject`", "typeof GetObject('', 'Scripting.Dictionary') == 'object'");
about("`ScriptEngine`", "ScriptEngine() == 'JScript' && ScriptEngineMajorVersion() >= 5");
about("`JSON`", "typeof JSON == 'undefined' || JSON.stringify([1]) == '[1]'");
about("regular expressions", "/(a+)(?=b)/.exec('caab')[1] == 'aa' && 'a-b'.replace(/(\\w)-(\\w)/, '$2$1') == 'ba' && /x/i.test('X')");
about("`split` by a regular expression", "'a1b22c'.split(/\\d+/).join() == 'a,b,c'");
about("`replace` with a function", "'abc'.replace(/b/, function (m) { return m.toUpperCase(); }) == 'aBc'");
about("methods of arrays", "[3, 1, 2].sort().join('') == '123' && [1, 2, 3].splice(1, 1)[0] == 2 && [1].concat([2]).reverse()[0] == 2 && [1, 2].slice(1).length == 1");
about("methods of texts", "'abc'.substr(1, 1) == 'b' && 'abc'.lastIndexOf('c') == 2 && 'a'.charCodeAt(0) == 97 && String.fromCharCode(97) == 'a'");
about("`localeCompare`", "'a'.localeCompare('b') < 0");
about("`toFixed`, `toPrecision`", "(1.005).toFixed(1) == '1.0' && (1.25).toPrecision(2).length == 3");
about("`parseInt`, `parseFloat`, `Number`", "parseInt('ff', 16) == 255 && parseFloat('1.5x') == 1.5 && isNaN(Number('x'))");
about("`toLocaleString` of numbers", "(1234.5).toLocaleString().length >= 6");
about("`Math`", "Math.round(2.5) == 3 && Math.max(1, 2) == 2 && Math.pow(2, 3) == 8 && Math.floor(-1.5) == -2");
about("`escape`, `encodeURIComponent`", "escape('a b') == 'a%20b' && encodeURIComponent('a b') == 'a%20b' && decodeURIComponent('a%20b') == 'a b'");
about("`call`, `apply`", "Math.max.apply(null, [1, 5]) == 5 && Math.max.call(null, 1, 5) == 5");
about("`try`, `finally`, labels, `switch`", "(function () { var t = ''; outer: for (var i = 0; ; i++) { switch (i) { case 0: continue outer; default: try { break outer; } finally { t += i; } } } return t; })() == '1'");
about("`in`, `instanceof`, `delete`", "('a' in { a: 1 }) && ([] instanceof Array) && delete { a: 1 }.a");
about("`with`, `eval`, `Function`", "new Function('a', 'return a + 1')(1) == 2 && eval('1 + 1') == 2");
about("`@cc_on`", "eval('/*@cc_on 7; @*/') == 7");
about("errors: `number`, `description`, `message`, `name`", "thrown(new Error(77, 'x')).number == 77 && thrown(new Error(77, 'x')).description == 'x' && thrown(new Error('y')).message == 'y' && new TypeError('x') instanceof Error");
about("`number` of an error of an object", "raised(function () { files.GetFile('C:\\\\no such file'); }) == 53");
about("`description` of an error that an object returns as a number", "(function () { try { files.GetFile('C:\\\\no such file'); } catch (e) { return e.description.length > 0; } })()");
about("`number` of an unknown member", "raised(function () { files.NoMember(); }) == 438");
about("`number` of a value that is no object", "raised(function () { undefined.member(); }) == 5007");
about("a small `number` of an error that a callback object throws", "raised(function () { clock.TimerTick(1); }) == 77");
about("`number` of an unknown class", "raised(function () { new ActiveXObject('No.Such'); }) == 429");
about("an object's member called by its default", "dictionary('b') == 2");
about("properties with arguments", "(dictionary.Item('c') = 3, dictionary('c')) == 3");

// A row of the page that this system does not lack any more: only where something is lacking at all.
if (found != "|") {
    var rows = page.split(/\r?\n/);
    for (var i = 0; i < rows.length; i++) {
        var row = /^\| (.*?) \|/.exec(rows[i]);
        if (row && row[1] != "lacking") check("still lacking: " + row[1], found.indexOf("|" + row[1] + "|") >= 0);
    }
}
clock.TimerEvents = null;
check("the list is made", true);
WScript.Echo("done " + checks);
