// The program of docs/javascript.md, used twice: a file that is not there, one that is, and its name the next time.
// expect-output: ^ok remembered$
var count = 0;
function check(name, good) {
    count++;
    WScript.Echo((good ? "ok " : "not ok ") + name);
}
var before = new ActiveXObject("KWOUtil.KWORegistry");
before.KWO_RegDeleteKey(0x80000001, "Software\\My Program");
var turns = 0;
var user = new ActiveXObject("KWOUtil.KWOTimer");
user.AlarmEvents = {
    Alarm: function (sender, tag, newDateTime) {
        if (form.ActiveControl === null && turns++ < 400) return sender.AddRelativeAlarm(20, tag);
        check("the focus is in the text box", form.ActiveControl.Name == "txtFile");
        txtFile.Text = "C:\\no such file";
        Host.TypeKeys("%s");
        check("the error is told: " + lblState.Caption, lblState.Caption.indexOf("Error 53 in the button") == 0);
        txtFile.Text = WScript.ScriptFullName;
        Host.Click(picSize, 600, 200);
        check("the program goes on: " + lblState.Caption, / bytes$/.test(lblState.Caption));
        form.Close();
    }
};
user.AddRelativeAlarm(20, 1);

//@example

check("remembered", registry.KWO_RegGetValueEx(registry.KWO_RegCreateKey(ROOT, PATH), "File", "") == WScript.ScriptFullName);
before.KWO_RegDeleteKey(0x80000001, "Software\\My Program");
WScript.Echo("done " + count);
