// Drives samples/watch.js: changes, a pause, the icon.
// arguments: watched.txt
var checks = 0;
function Check(name, good) {
    checks++;
    WScript.Echo((good ? "ok " : "not ok ") + name);
}

var disk = new ActiveXObject("Scripting.FileSystemObject");
function write(text) {
    var stream = disk.CreateTextFile(WScript.Arguments(0), true);
    stream.Write(text);
    stream.Close();
}
write("one");
var user = WScript.CreateObject("KWOUtil.KWOTimer", "user");
var turns = 0;
user.AddRelativeAlarm(100, 1);

// Goes to the next step when `isSo`, or much too late.
function when(isSo, tag) {
    turns = isSo ? 0 : turns + 1;
    user.AddRelativeAlarm(20, isSo || turns > 500 ? tag + 1 : tag);
}
function user_Alarm(sender, tag, newDateTime) {
    switch (tag) {
        case 1:
            Check("it watches", form.Visible && lblState.Caption == "watching" && lstNews.ListCount == 0);
            write("one and two");
            return when(true, tag);
        case 2:
            return when(lstNews.ListCount == 1, tag);
        case 3:
            Check("a change", lstNews.ListCount == 1 && lstNews.List(0).indexOf("watched.txt: 11 bytes") > 0);
            Check("the tip", tray.Tip == "Watch: 1 change");
            Host.TypeKeys("%p");
            Check("paused", chkPause.Value == 1 && !clock.Enabled);
            disk.DeleteFile(WScript.Arguments(0));
            return user.AddRelativeAlarm(800, 4);
        case 4:
            Check("nothing is seen in a pause", lstNews.ListCount == 1);
            Host.TypeKeys("%p");
            return when(true, tag);
        case 5:
            return when(lstNews.ListCount == 2, tag);
        case 6:
            Check("gone", lstNews.ListCount == 2 && lstNews.List(1).indexOf("watched.txt: missing") > 0);
            picture("watch");
            Host.TypeKeys("%c");
            Check("cleared", lstNews.ListCount == 0);
            form.WindowState = 1;
            Check("only the icon", !form.Visible);
            frmTray_MouseMove(0, 0, tray.DoubleClickMsg(1) * Screen.TwipsPerPixelX, 0);
            Check("the window again", form.Visible && form.WindowState == 0);
            Host.TypeKeys("{ESC}");
    }
}
function picture(name) {
    var folder = new ActiveXObject("WScript.Shell").ExpandEnvironmentStrings("%KWO_PICTURES%");
    // Wine adds the zero at its end.
    if (folder.charCodeAt(folder.length - 1) == 0) folder = folder.substr(0, folder.length - 1);
    if (folder.indexOf("%") < 0) Host.SavePicture(form, folder + "\\" + name + ".bmp");
}

//@sample

Check("it ended", true);
WScript.Echo("done " + checks);
