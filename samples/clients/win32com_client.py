"""KWOUtil from Python with pywin32 (pip install pywin32), early bound: EnsureDispatch reads the type library.

    python win32com_client.py

Bitness: that of python.exe.
"""
import datetime

import pythoncom
import win32com.client

CURRENT_USER = -2147483647  # &H80000001
KEY_NAME = r'Software\KWOUtil Client'


class TimerEvents:
    """A procedure On<event> receives each event."""

    def OnAlarm(self, sender, tag, new_date_time):
        print(f'event: alarm {tag}')


registry = win32com.client.gencache.EnsureDispatch('KWOUtil.KWORegistry')
utility = win32com.client.gencache.EnsureDispatch('KWOUtil.KWOUtility')
timer = win32com.client.gencache.EnsureDispatch('KWOUtil.KWOTimer')
events = win32com.client.WithEvents(timer, TimerEvents)

# A by-reference result: the call returns a tuple of its result and then of every by-reference argument.
registry.KWO_RegSetValue(CURRENT_USER, KEY_NAME, 'Greeting', 'Hello')
status, _, _, _, value = registry.KWO_RegGetValue(CURRENT_USER, KEY_NAME, 'Greeting', '')
print(f'by reference: {value}')

# A date: the default is a date, so the result is one.
key = registry.KWO_RegCreateKey(CURRENT_USER, KEY_NAME)[0]
registry.KWO_RegSetValue(key, '', 'When', '2024-02-29 13:30:00')
moment = registry.KWO_RegGetValueEx(key, 'When', datetime.datetime(2000, 1, 1))[0]
print(f'date: {moment:%Y-%m-%d %H:%M:%S}')
registry.KWO_RegDeleteKey(CURRENT_USER, KEY_NAME)

# Alarms arrive while messages are processed; KWO_Pause processes them, here for 300 milliseconds.
timer.AddRelativeAlarm(50, 7)
utility.KWO_Pause(300)

# An error: this member refuses the seconds from 33 to 99.
try:
    utility.KWO_Pause(50)
except pythoncom.com_error as error:
    _, source, description, _, _, number = error.excepinfo
    print(f'error: {number & 0xFFFF}')
    print(f'source: {source}')
    print(f'description: {description}')
