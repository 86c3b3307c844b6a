//! KWOUtil from Rust, through the virtual tables that kwoutil.idl describes. It needs no crate:
//!
//!     rustc --edition 2021 --target x86_64-pc-windows-gnu client.rs
//!
//! Bitness: that of the program (i686-pc-windows-gnu for 32 bits). The source is the same for both.

use std::ffi::c_void;
use std::ptr::null_mut;

type Hresult = i32;
type Bstr = *mut u16;
type Object = *mut c_void;

#[repr(C)]
#[derive(PartialEq)]
struct Guid(u32, u16, u16, [u8; 8]);

/// The variant of automation, as far as this program needs it: it holds a date.
#[repr(C)]
struct Variant {
    kind: u16,
    reserved: [u16; 3],
    date: f64,
    #[cfg(target_pointer_width = "64")]
    rest: usize,
}
impl Variant {
    fn date(date: f64) -> Variant {
        const VT_DATE: u16 = 7;
        Variant {
            kind: VT_DATE,
            reserved: [0; 3],
            date,
            #[cfg(target_pointer_width = "64")]
            rest: 0,
        }
    }
}

#[repr(C)]
#[derive(Default)]
struct SystemTime {
    year: u16,
    month: u16,
    day_of_week: u16,
    day: u16,
    hour: u16,
    minute: u16,
    second: u16,
    millisecond: u16,
}

#[link(name = "ole32")]
extern "system" {
    fn CoInitializeEx(reserved: *mut c_void, model: u32) -> Hresult;
    fn CoUninitialize();
    fn CoCreateInstance(class: &Guid, outer: Object, context: u32, interface: &Guid, object: &mut Object) -> Hresult;
}
#[link(name = "oleaut32")]
extern "system" {
    fn SysAllocString(text: *const u16) -> Bstr;
    fn SysFreeString(text: Bstr);
    fn SysStringLen(text: Bstr) -> u32;
    fn GetErrorInfo(reserved: u32, error: &mut *mut ErrorInfo) -> Hresult;
    fn VariantTimeToSystemTime(date: f64, time: &mut SystemTime) -> i32;
}

/// The seven members that every automation interface begins with.
#[repr(C)]
struct DispatchTable {
    query_interface: unsafe extern "system" fn(Object, &Guid, &mut Object) -> Hresult,
    add_ref: unsafe extern "system" fn(Object) -> u32,
    release: unsafe extern "system" fn(Object) -> u32,
    get_type_info_count: unsafe extern "system" fn(Object, *mut u32) -> Hresult,
    get_type_info: unsafe extern "system" fn(Object, u32, u32, *mut Object) -> Hresult,
    get_ids_of_names: unsafe extern "system" fn(Object, Object, Object, u32, u32, *mut i32) -> Hresult,
    invoke: unsafe extern "system" fn(Object, i32, Object, u32, u16, Object, Object, Object, Object) -> Hresult,
}

/// Members stand in the order of kwoutil.idl. A slot that this program does not call is a `Slot`; members behind the
/// last one that it calls may be left out.
type Slot = *const c_void;

#[repr(C)]
struct RegistryTable {
    dispatch: DispatchTable,
    get_value_ex: unsafe extern "system" fn(*mut Registry, &mut i32, &mut Bstr, Variant, &mut Variant) -> Hresult,
    delete_key: unsafe extern "system" fn(*mut Registry, &mut i32, &mut Bstr, &mut i32) -> Hresult,
    delete_value: Slot,
    create_key: unsafe extern "system" fn(*mut Registry, &mut i32, &mut Bstr, &mut i32) -> Hresult,
    set_value: unsafe extern "system" fn(*mut Registry, &mut i32, &mut Bstr, &mut Bstr, &mut Bstr, &mut i32) -> Hresult,
    get_value: unsafe extern "system" fn(*mut Registry, &mut i32, &mut Bstr, &mut Bstr, &mut Bstr, &mut i32) -> Hresult,
}
#[repr(C)]
struct Registry(*const RegistryTable);

#[repr(C)]
struct UtilityTable {
    dispatch: DispatchTable,
    find_in_path: Slot,
    center_form: Slot,
    set_form_position: Slot,
    load_app: Slot,
    pause: unsafe extern "system" fn(*mut Utility, &mut i16) -> Hresult,
}
#[repr(C)]
struct Utility(*const UtilityTable);

#[repr(C)]
struct TimerTable {
    dispatch: DispatchTable,
    before_alarm_events: [Slot; 8],
    set_alarm_events: unsafe extern "system" fn(*mut Timer, *mut Listener) -> Hresult,
    before_add_relative_alarm: [Slot; 7],
    add_relative_alarm: unsafe extern "system" fn(*mut Timer, i32, i32) -> Hresult,
}
#[repr(C)]
struct Timer(*const TimerTable);

#[repr(C)]
struct ErrorInfoTable {
    query_interface: Slot,
    add_ref: Slot,
    release: unsafe extern "system" fn(*mut ErrorInfo) -> u32,
    guid: Slot,
    source: unsafe extern "system" fn(*mut ErrorInfo, &mut Bstr) -> Hresult,
    description: unsafe extern "system" fn(*mut ErrorInfo, &mut Bstr) -> Hresult,
}
#[repr(C)]
struct ErrorInfo(*const ErrorInfoTable);

const IID_UNKNOWN: Guid = Guid(0, 0, 0, [0xC0, 0, 0, 0, 0, 0, 0, 0x46]);
const IID_DISPATCH: Guid = Guid(0x00020400, 0, 0, [0xC0, 0, 0, 0, 0, 0, 0, 0x46]);
const IID_ALARM: Guid = Guid(0xA85E49B4, 0xE56E, 0x41C5, [0xBE, 0x4F, 0xF5, 0x4E, 0xE3, 0xD7, 0x5E, 0xFA]);
const CLSID_REGISTRY: Guid = Guid(0x010FA79D, 0x6CEA, 0x4AE3, [0xAE, 0x51, 0x3D, 0x3F, 0xE2, 0xA9, 0xEC, 0x7B]);
const IID_REGISTRY: Guid = Guid(0xCB65FC9F, 0x103D, 0x4546, [0xBE, 0x63, 0x7A, 0x30, 0x29, 0x4D, 0x7D, 0x09]);
const CLSID_UTILITY: Guid = Guid(0x9D2A4D26, 0x4B62, 0x49DB, [0xAA, 0x70, 0x57, 0xCD, 0x01, 0x3D, 0x3C, 0x80]);
const IID_UTILITY: Guid = Guid(0x1F3E630D, 0x962B, 0x4268, [0xB9, 0x1B, 0x87, 0xCA, 0x33, 0xC8, 0x14, 0x4B]);
const CLSID_TIMER: Guid = Guid(0x97517F0F, 0xB919, 0x4AEC, [0x8B, 0x56, 0x27, 0x6E, 0x39, 0xAC, 0xA8, 0xDB]);
const IID_TIMER: Guid = Guid(0x7918413F, 0xBDD0, 0x4E96, [0x91, 0xA4, 0xE6, 0x48, 0x7C, 0x60, 0x85, 0x5E]);

/// Owns a string. Members take strings by reference, because they may replace them.
struct Text(Bstr);
impl Text {
    fn new(text: &str) -> Text {
        let zero_terminated: Vec<u16> = text.encode_utf16().chain([0]).collect();
        Text(unsafe { SysAllocString(zero_terminated.as_ptr()) })
    }
    fn get(&self) -> String {
        if self.0.is_null() {
            return String::new();
        }
        unsafe { String::from_utf16_lossy(std::slice::from_raw_parts(self.0, SysStringLen(self.0) as usize)) }
    }
}
impl Drop for Text {
    fn drop(&mut self) {
        unsafe { SysFreeString(self.0) }
    }
}

fn check(result: Hresult) -> Result<(), Hresult> {
    if result < 0 {
        Err(result)
    } else {
        Ok(())
    }
}

unsafe fn create<T>(class: &Guid, interface: &Guid) -> Result<*mut T, Hresult> {
    const IN_PROCESS: u32 = 1;
    let mut object = null_mut();
    check(CoCreateInstance(class, null_mut(), IN_PROCESS, interface, &mut object))?;
    Ok(object.cast())
}

/// The callback object, an _IKWOAlarm: one for the whole program, so it does not count its references.
#[repr(C)]
struct ListenerTable {
    dispatch: DispatchTable,
    alarm: unsafe extern "system" fn(Object, *mut Object, &i32, &mut f64) -> Hresult,
}
#[repr(C)]
struct Listener(*const ListenerTable);

const E_NOINTERFACE: Hresult = 0x80004002_u32 as Hresult;
const E_NOTIMPL: Hresult = 0x80004001_u32 as Hresult;

unsafe extern "system" fn query_interface(listener: Object, id: &Guid, object: &mut Object) -> Hresult {
    let known = [&IID_UNKNOWN, &IID_DISPATCH, &IID_ALARM].contains(&id);
    *object = if known { listener } else { null_mut() };
    if known {
        0
    } else {
        E_NOINTERFACE
    }
}
unsafe extern "system" fn count_reference(_: Object) -> u32 {
    1
}
unsafe extern "system" fn get_type_info_count(_: Object, count: *mut u32) -> Hresult {
    *count = 0;
    0
}
unsafe extern "system" fn get_type_info(_: Object, _: u32, _: u32, _: *mut Object) -> Hresult {
    E_NOTIMPL
}
unsafe extern "system" fn get_ids_of_names(_: Object, _: Object, _: Object, _: u32, _: u32, _: *mut i32) -> Hresult {
    E_NOTIMPL
}
#[rustfmt::skip]
unsafe extern "system" fn invoke(_: Object, _: i32, _: Object, _: u32, _: u16, _: Object, _: Object, _: Object,
                                 _: Object) -> Hresult {
    E_NOTIMPL
}
/// The timer calls this member through the virtual table.
unsafe extern "system" fn alarm(_: Object, _timer: *mut Object, tag: &i32, _new_date_time: &mut f64) -> Hresult {
    println!("event: alarm {tag}");
    0
}
static LISTENER_TABLE: ListenerTable = ListenerTable {
    dispatch: DispatchTable {
        query_interface,
        add_ref: count_reference,
        release: count_reference,
        get_type_info_count,
        get_type_info,
        get_ids_of_names,
        invoke,
    },
    alarm,
};

fn read_the_registry() -> Result<(), Hresult> {
    let mut root = 0x80000001_u32 as i32;
    let mut key_name = Text::new("Software\\KWOUtil Client");
    let mut status = 0;
    unsafe {
        let registry: *mut Registry = create(&CLSID_REGISTRY, &IID_REGISTRY)?;
        let table = &*(*registry).0;

        // A by-reference result: the member puts the text into the string.
        let mut greeting = Text::new("Greeting");
        let mut hello = Text::new("Hello");
        let mut value = Text::new("");
        check((table.set_value)(registry, &mut root, &mut key_name.0, &mut greeting.0, &mut hello.0, &mut status))?;
        check((table.get_value)(registry, &mut root, &mut key_name.0, &mut greeting.0, &mut value.0, &mut status))?;
        println!("by reference: {}", value.get());

        // A date: the default is a date, so the result is one.
        let mut no_name = Text::new("");
        let mut when = Text::new("When");
        let mut moment = Text::new("2024-02-29 13:30:00");
        let mut key = 0;
        check((table.create_key)(registry, &mut root, &mut key_name.0, &mut key))?;
        check((table.set_value)(registry, &mut key, &mut no_name.0, &mut when.0, &mut moment.0, &mut status))?;
        let mut found = Variant::date(0.0);
        check((table.get_value_ex)(registry, &mut key, &mut when.0, Variant::date(0.0), &mut found))?;
        println!("date: {}", date_text(found.date));
        check((table.delete_key)(registry, &mut root, &mut key_name.0, &mut status))?;
        (table.dispatch.release)(registry.cast());
    }
    Ok(())
}

fn date_text(date: f64) -> String {
    let mut time = SystemTime::default();
    unsafe { VariantTimeToSystemTime(date, &mut time) };
    format!("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", time.year, time.month, time.day, time.hour, time.minute, time.second)
}

fn wait_for_an_alarm(utility: *mut Utility) -> Result<(), Hresult> {
    let mut listener = Listener(&LISTENER_TABLE);
    let mut milliseconds = 300;
    unsafe {
        let timer: *mut Timer = create(&CLSID_TIMER, &IID_TIMER)?;
        let table = &*(*timer).0;
        check((table.set_alarm_events)(timer, &mut listener))?;
        check((table.add_relative_alarm)(timer, 50, 7))?;
        // Alarms arrive while messages are processed; KWO_Pause processes them, here for 300 milliseconds.
        check(((*(*utility).0).pause)(utility, &mut milliseconds))?;
        (table.dispatch.release)(timer.cast());
    }
    Ok(())
}

fn use_everything() -> Result<(), Hresult> {
    read_the_registry()?;
    unsafe {
        let utility: *mut Utility = create(&CLSID_UTILITY, &IID_UTILITY)?;
        wait_for_an_alarm(utility)?;

        // An error: this member refuses the seconds from 33 to 99.
        let mut seconds = 50;
        let result = ((*(*utility).0).pause)(utility, &mut seconds);
        ((*(*utility).0).dispatch.release)(utility.cast());
        check(result)
    }
}

/// Prints what failed. Source and description are in the thread's error object.
fn print(result: Hresult) {
    // Scripts and classic BASIC see 6 for 0x800A0006.
    let is_control = (result >> 16) & 0x1FFF == 10;
    println!("error: {}", if is_control { result & 0xFFFF } else { result });
    unsafe {
        let mut error = null_mut();
        if GetErrorInfo(0, &mut error) == 0 {
            let table = &*(*error).0;
            let mut source = Text::new("");
            let mut description = Text::new("");
            (table.source)(error, &mut source.0);
            (table.description)(error, &mut description.0);
            println!("source: {}\ndescription: {}", source.get(), description.get());
            (table.release)(error);
        }
    }
}

fn main() {
    // The objects belong to the thread that creates them; its apartment must be single-threaded.
    const SINGLE_THREADED: u32 = 2;
    unsafe { CoInitializeEx(null_mut(), SINGLE_THREADED) };
    if let Err(result) = use_everything() {
        print(result);
    }
    unsafe { CoUninitialize() };
}
