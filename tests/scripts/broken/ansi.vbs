WScript.Echo "ü"
