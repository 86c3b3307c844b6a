' The form of docs/kwohost.md: pressed and closed by an alarm while it runs.
' expect-output: ^pressed at 495 600$
'@include checks.vbs
Set clock = WScript.CreateObject("KWOUtil.KWOTimer", "clock")
clock.AddRelativeAlarm 300, 1
Sub clock_Alarm(sender, tag, newDateTime)
    Check "it is shown", form.Visible
    Host.Click box, 495, 600
    form.Close
End Sub

'@example

Check "it ran until the end of the form", count = 1
WScript.Echo "done " & count
