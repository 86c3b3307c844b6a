' The form with controls of docs/kwohost.md: filled in and closed by the keyboard, from an alarm while it runs.
' expect-output: ^HELLO, BOB$
'@include checks.vbs
Dim greeting
Set clock = WScript.CreateObject("KWOUtil.KWOTimer", "clock")
clock.AddRelativeAlarm 20, 1
turns = 0
Sub clock_Alarm(sender, tag, newDateTime)
    turns = turns + 1
    If form.ActiveControl Is Nothing And turns < 400 Then
        sender.AddRelativeAlarm 20, tag
        Exit Sub
    End If
    Check "the first control has the focus", form.ActiveControl.Name = "txtName"
    Host.TypeKeys "%l%nBob{ENTER}"
End Sub

'@example

Check "it ran until the button was pressed", greeting = "HELLO, BOB"
WScript.Echo "done " & count
