' The example of docs/sys-metrics.md.
' expect-output: ^[1-9][0-9]+ pixels$
' expect-output: ^[1-9][0-9]+ twips$
'@include checks.vbs

'@example

Check "twips", metrics.ScreenX(1) = metrics.ScreenX * Screen.TwipsPerPixelX
WScript.Echo "done " & count
