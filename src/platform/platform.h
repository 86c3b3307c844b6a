#pragma once

namespace kwo::platform {

class Clock;
class Conversions;
class DebugOutput;
class Desktop;
class EventLog;
class FileSystem;
class HostApplication;
class LogFiles;
class MessageLoop;
class ProcessMemory;
class RegistryStore;
class Screen;
class SystemErrors;

/// Everything a component may ask of the system around it. The services outlive the component.
struct Platform {
    Clock& clock;
    Conversions& conversions;
    DebugOutput& debugOutput;
    Desktop& desktop;
    EventLog& eventLog;
    FileSystem& files;
    HostApplication& host;
    LogFiles& logFiles;
    MessageLoop& messages;
    ProcessMemory& processMemory;
    RegistryStore& registry;
    Screen& screen;
    SystemErrors& errors;
};

}  // namespace kwo::platform
