' Sizes and settings of the desktop from KWOUtil.KWOSysMetrics, in pixels and in twips.
Option Explicit

Const Twips = 1, Pixels = 3
Dim metrics
Set metrics = CreateObject("KWOUtil.KWOSysMetrics")

Sub Show(name, inPixels, inTwips)
    WScript.Echo Left(name & Space(24), 24) & Right(Space(8) & inPixels, 8) & Right(Space(10) & inTwips, 10)
End Sub

Show "", "pixels", "twips"
Show "screen, width", metrics.ScreenX, metrics.ScreenX(Twips)
Show "screen, height", metrics.ScreenY, metrics.ScreenY(Twips)
Show "window border", metrics.BorderX, metrics.BorderX(Twips)
Show "caption", metrics.CaptionAreaY, metrics.CaptionAreaY(Twips)
Show "menu bar", metrics.SingleMenuBarY, metrics.SingleMenuBarY(Twips)
Show "scroll bar", metrics.VScrollX, metrics.VScrollX(Twips)
Show "icon", metrics.IconX, metrics.IconX(Twips)
Show "small icon", metrics.SmallIconX, metrics.SmallIconX(Twips)

' The property counts for all later calls; the argument counts for one.
metrics.ScaleMode = Twips
WScript.Echo "by the property:", metrics.ScreenX, "twips, by the argument:", metrics.ScreenX(Pixels), "pixels"

WScript.Echo "mouse:", metrics.MousePresent, "with", metrics.MouseButtons, "buttons, swapped:", metrics.SwapButtons
WScript.Echo "network:", metrics.Network, " slow machine:", metrics.SlowMachine, " clean boot:", metrics.CleanBoot
