// KWOUtil from C#, late bound: "dynamic" calls members by name (.NET Framework 4 and later, .NET 5 and later).
//
//   csc late_bound.cs
//
// Bitness: that of the process. /platform:x86 and /platform:x64 choose one; without them it is that of the system.
using System;
using System.Runtime.InteropServices;

/// A callback object is any object that automation can call, with a method of this name.
[ComVisible(true)]
public class AlarmListener
{
    public void Alarm(object sender, ref int tag, ref DateTime newDateTime)
    {
        Console.WriteLine("event: alarm " + tag);
    }
}

public static class Program
{
    private static dynamic Create(string name)
    {
        return Activator.CreateInstance(Type.GetTypeFromProgID(name, throwOnError: true));
    }

    private static void ReadTheRegistry()
    {
        const int currentUser = unchecked((int)0x80000001);
        const string keyName = @"Software\KWOUtil Client";
        dynamic registry = Create("KWOUtil.KWORegistry");

        // A by-reference result: the member puts the text into the variable.
        object value = "";
        registry.KWO_RegSetValue(currentUser, keyName, "Greeting", "Hello");
        registry.KWO_RegGetValue(currentUser, keyName, "Greeting", ref value);
        Console.WriteLine("by reference: " + value);

        // A date: the default is a date, so the result is one.
        int key = registry.KWO_RegCreateKey(currentUser, keyName);
        registry.KWO_RegSetValue(key, "", "When", "2024-02-29 13:30:00");
        DateTime moment = registry.KWO_RegGetValueEx(key, "When", new DateTime(2000, 1, 1));
        Console.WriteLine("date: " + moment.ToString("yyyy-MM-dd HH:mm:ss"));
        registry.KWO_RegDeleteKey(currentUser, keyName);
    }

    // The objects belong to the thread that creates them; its apartment must be single-threaded.
    [STAThread]
    public static void Main()
    {
        ReadTheRegistry();
        dynamic timer = Create("KWOUtil.KWOTimer");
        dynamic utility = Create("KWOUtil.KWOUtility");

        // Alarms arrive while messages are processed; KWO_Pause processes them, here for 300 milliseconds.
        timer.AlarmEvents = new AlarmListener();
        timer.AddRelativeAlarm(50, 7);
        utility.KWO_Pause((short)300);

        // An error: this member refuses the seconds from 33 to 99. Some numbers have an exception of their own (this
        // one is an OverflowException), the others are a COMException; HResult has the number in either.
        try
        {
            utility.KWO_Pause((short)50);
        }
        catch (Exception error)
        {
            Console.WriteLine("error: " + (error.HResult & 0xFFFF));
            Console.WriteLine("source: " + error.Source);
            Console.WriteLine("description: " + error.Message);
        }
    }
}
