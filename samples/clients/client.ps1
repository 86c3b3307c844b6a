# KWOUtil from PowerShell:
#
#   powershell -File client.ps1
#
# Bitness: that of powershell.exe. 64-bit Windows has two: the one in System32 is 64-bit, the one in SysWOW64 is 32-bit.
$currentUser = -2147483647    # &H80000001
$keyName = 'Software\KWOUtil Client'
$registry = New-Object -ComObject KWOUtil.KWORegistry
$timer = New-Object -ComObject KWOUtil.KWOTimer
$utility = New-Object -ComObject KWOUtil.KWOUtility

# A by-reference result: [ref] passes the variable.
$value = ''
$null = $registry.KWO_RegSetValue($currentUser, $keyName, 'Greeting', 'Hello')
$null = $registry.KWO_RegGetValue($currentUser, $keyName, 'Greeting', [ref]$value)
"by reference: $value"

# A date: the default is a date, so the result is one.
$key = $registry.KWO_RegCreateKey($currentUser, $keyName)
$null = $registry.KWO_RegSetValue($key, '', 'When', '2024-02-29 13:30:00')
$moment = $registry.KWO_RegGetValueEx($key, 'When', [datetime]'2000-01-01')
"date: $($moment.ToString('yyyy-MM-dd HH:mm:ss'))"
$null = $registry.KWO_RegDeleteKey($currentUser, $keyName)

# PowerShell connects no events of such an object. A callback object is any object that automation can call, with a
# method of this name; a class of .NET makes one.
Add-Type -TypeDefinition @'
[System.Runtime.InteropServices.ComVisible(true)]
public class AlarmListener
{
    public int Tag;
    public void Alarm(object sender, ref int tag, ref System.DateTime newDateTime)
    {
        Tag = tag;
    }
}
'@
$listener = New-Object AlarmListener
$timer.AlarmEvents = $listener

# Alarms arrive while messages are processed; KWO_Pause processes them, here for 300 milliseconds.
$timer.AddRelativeAlarm(50, 7)
$utility.KWO_Pause(300)
"event: alarm $($listener.Tag)"

# An error: this member refuses the seconds from 33 to 99.
try {
    $utility.KWO_Pause(50)
}
catch {
    $raised = $_.Exception
    while ($raised.InnerException) { $raised = $raised.InnerException }
    "error: $($raised.HResult -band 0xFFFF)"
    "source: $($raised.Source)"
    "description: $($raised.Message)"
}
