' The form with controls of docs/kwohost.md: filled in and closed by the keyboard, from an alarm while it runs.
' expect-output: ^HELLO, BOB$
'@include checks.vbs
Dim greeting
Set clock = WScript.CreateObject("KWOUtil.KWOTimer", "clock")
clock.AddRelativeAlarm 300, 1
Sub clock_Alarm(sender, tag, newDateTime)
    Check "the first control has the focus", form.ActiveControl.Name = "txtName"
    Host.TypeKeys "%l%nBob{ENTER}"
End Sub

'@example

Check "it ran until the button was pressed", greeting = "HELLO, BOB"
WScript.Echo "done " & count
