' The message box of docs/kwohost.md, which an alarm closes.
' expect-output: ^deleted$
'@include checks.vbs
'@include forms.vbs
Set form = Host.CreateForm("frmMain")
form.Move 3000, 2000, 4500, 3000
ShowInFront form

'@example

Check "the form can be used again", form.Enabled
form.Close
WScript.Echo "done " & count
