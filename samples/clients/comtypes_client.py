"""KWOUtil from Python with comtypes (pip install comtypes): calls go through the virtual tables.

    python comtypes_client.py

Bitness: that of python.exe.
"""
import datetime

import comtypes
import comtypes.client

CURRENT_USER = -2147483647  # &H80000001
KEY_NAME = r'Software\KWOUtil Client'


class TimerEvents:
    """A procedure with the event's name receives each event."""

    def Alarm(self, sender, tag, new_date_time):
        # The tag is by reference: [0] reads it.
        print(f'event: alarm {tag[0]}')


registry = comtypes.client.CreateObject('KWOUtil.KWORegistry')
utility = comtypes.client.CreateObject('KWOUtil.KWOUtility')
timer = comtypes.client.CreateObject('KWOUtil.KWOTimer')
connection = comtypes.client.GetEvents(timer, TimerEvents())

# A by-reference result: the call returns every by-reference argument in its order, and its result behind them.
registry.KWO_RegSetValue(CURRENT_USER, KEY_NAME, 'Greeting', 'Hello')
_, _, _, value, status = registry.KWO_RegGetValue(CURRENT_USER, KEY_NAME, 'Greeting', '')
print(f'by reference: {value}')

# A date: the default is a date, so the result is one.
key = registry.KWO_RegCreateKey(CURRENT_USER, KEY_NAME)[-1]
registry.KWO_RegSetValue(key, '', 'When', '2024-02-29 13:30:00')
moment = registry.KWO_RegGetValueEx(key, 'When', datetime.datetime(2000, 1, 1))[-1]
print(f'date: {moment:%Y-%m-%d %H:%M:%S}')
registry.KWO_RegDeleteKey(CURRENT_USER, KEY_NAME)

# Alarms arrive while messages are processed; KWO_Pause processes them, here for 300 milliseconds.
timer.AddRelativeAlarm(50, 7)
utility.KWO_Pause(300)

# An error: this member refuses the seconds from 33 to 99.
try:
    utility.KWO_Pause(50)
except comtypes.COMError as error:
    description, source, _, _, _ = error.details
    print(f'error: {error.hresult & 0xFFFF}')
    print(f'source: {source}')
    print(f'description: {description}')
