// KWOUtil from C#, early bound: calls go through the virtual tables. The interfaces are declared here, so that the
// program needs neither a reference to the type library nor the tool that reads one. With a reference ("KWO General and
// Common Utilities") leave out the declarations, and write `new KWOUtil.KWOTimer()` and `timer.Alarm += ...`.
//
//   csc early_bound.cs
//
// Bitness: that of the process. /platform:x86 and /platform:x64 choose one; without them it is that of the system.
using System;
using System.Runtime.InteropServices;
using System.Runtime.InteropServices.ComTypes;
using System.Threading;

namespace KWOUtilClient
{
    // Members stand in the order of kwoutil.idl; those behind the last one that is called may be left out.
    [ComImport, Guid("cb65fc9f-103d-4546-be63-7a30294d7d09"), InterfaceType(ComInterfaceType.InterfaceIsDual)]
    public interface IRegistry
    {
        object KWO_RegGetValueEx(ref int key, [MarshalAs(UnmanagedType.BStr)] ref string valueName,
            object defaultValue);
        int KWO_RegDeleteKey(ref int root, [MarshalAs(UnmanagedType.BStr)] ref string keyName);
        int KWO_RegDeleteValue(ref int root, [MarshalAs(UnmanagedType.BStr)] ref string keyName,
            [MarshalAs(UnmanagedType.BStr)] ref string valueName);
        int KWO_RegCreateKey(ref int root, [MarshalAs(UnmanagedType.BStr)] ref string keyName);
        int KWO_RegSetValue(ref int root, [MarshalAs(UnmanagedType.BStr)] ref string keyName,
            [MarshalAs(UnmanagedType.BStr)] ref string valueName, [MarshalAs(UnmanagedType.BStr)] ref string value);
        int KWO_RegGetValue(ref int root, [MarshalAs(UnmanagedType.BStr)] ref string keyName,
            [MarshalAs(UnmanagedType.BStr)] ref string valueName, [MarshalAs(UnmanagedType.BStr)] ref string value);
    }

    [ComImport, Guid("1f3e630d-962b-4268-b91b-87ca33c8144b"), InterfaceType(ComInterfaceType.InterfaceIsDual)]
    public interface IUtility
    {
        void KWO_FindInPath();
        void KWO_CenterForm();
        void KWO_SetFormPosition();
        void KWO_LoadApp();
        void KWO_Pause(ref short seconds);
    }

    [ComImport, Guid("7918413f-bdd0-4e96-91a4-e6487c60855e"), InterfaceType(ComInterfaceType.InterfaceIsDual)]
    public interface ITimer
    {
        void GetItem();
        void LetItem();
        void SetItem();
        void GetItemData();
        void LetItemData();
        void GetEnabled();
        void LetEnabled();
        void GetAlarmEvents();
        void SetAlarmEvents();
        void GetTimerEvents();
        void SetTimerEvents();
        void AddAlarm(DateTime moment, int tag);
        void GetInterval();
        void LetInterval();
        void TimerTick();
        void CancelTimers();
        void AddRelativeAlarm(int interval, int tag);
    }

    // The events, and the class that receives them.
    [ComImport, Guid("a4f1ec6c-779d-4bd2-a29e-873acaeef042"), InterfaceType(ComInterfaceType.InterfaceIsIDispatch)]
    public interface ITimerEvents
    {
        [DispId(1)]
        void Tick([MarshalAs(UnmanagedType.IDispatch)] object sender);
        [DispId(2)]
        void Alarm([MarshalAs(UnmanagedType.IDispatch)] object sender, ref int tag, ref DateTime newDateTime);
    }

    [ComVisible(true), ClassInterface(ClassInterfaceType.None)]
    public class Listener : ITimerEvents
    {
        public void Tick(object sender)
        {
        }

        public void Alarm(object sender, ref int tag, ref DateTime newDateTime)
        {
            Console.WriteLine("event: alarm " + tag);
        }
    }

    public static class Program
    {
        private static object Create(string name)
        {
            return Activator.CreateInstance(Type.GetTypeFromProgID(name, true));
        }

        private static void ReadTheRegistry()
        {
            var registry = (IRegistry)Create("KWOUtil.KWORegistry");
            int root = unchecked((int)0x80000001);
            string keyName = @"Software\KWOUtil Client", noName = "";

            // A by-reference result: the member puts the text into the variable.
            string greeting = "Greeting", hello = "Hello", value = "";
            registry.KWO_RegSetValue(ref root, ref keyName, ref greeting, ref hello);
            registry.KWO_RegGetValue(ref root, ref keyName, ref greeting, ref value);
            Console.WriteLine("by reference: " + value);

            // A date: the default is a date, so the result is one.
            string when = "When", moment = "2024-02-29 13:30:00";
            int key = registry.KWO_RegCreateKey(ref root, ref keyName);
            registry.KWO_RegSetValue(ref key, ref noName, ref when, ref moment);
            var found = (DateTime)registry.KWO_RegGetValueEx(ref key, ref when, new DateTime(2000, 1, 1));
            Console.WriteLine("date: " + found.ToString("yyyy-MM-dd HH:mm:ss"));
            registry.KWO_RegDeleteKey(ref root, ref keyName);
        }

        private static void WaitForAnAlarm(IUtility utility)
        {
            var timer = (ITimer)Create("KWOUtil.KWOTimer");
            var id = typeof(ITimerEvents).GUID;
            IConnectionPoint events;
            int connection;
            ((IConnectionPointContainer)timer).FindConnectionPoint(ref id, out events);
            events.Advise(new Listener(), out connection);

            // Alarms arrive while messages are processed; KWO_Pause processes them, here for 300 milliseconds.
            timer.AddRelativeAlarm(50, 7);
            short milliseconds = 300;
            utility.KWO_Pause(ref milliseconds);
            events.Unadvise(connection);
        }

        private static void UseEverything()
        {
            ReadTheRegistry();
            var utility = (IUtility)Create("KWOUtil.KWOUtility");
            WaitForAnAlarm(utility);

            // An error: this member refuses the seconds from 33 to 99. Some numbers have an exception of their own
            // (this one is an OverflowException), the others are a COMException; HResult has the number in either.
            try
            {
                short seconds = 50;
                utility.KWO_Pause(ref seconds);
            }
            catch (Exception error)
            {
                Console.WriteLine("error: " + (error.HResult & 0xFFFF));
                Console.WriteLine("source: " + error.Source);
                Console.WriteLine("description: " + error.Message);
            }
        }

        public static void Main()
        {
            // The objects belong to the thread that creates them; its apartment must be single-threaded. On the first
            // thread of a program, [STAThread] before Main does the same; .NET Core 2.0 passes over it.
            var thread = new Thread(UseEverything);
            thread.SetApartmentState(ApartmentState.STA);
            thread.Start();
            thread.Join();
        }
    }
}
