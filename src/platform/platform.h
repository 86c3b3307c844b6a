#pragma once

namespace kwo::platform {

class Clock;
class Conversions;
class Desktop;
class EventLog;
class FileSystem;
class HostApplication;
class MessageLoop;
class RegistryStore;
class Screen;
class SystemErrors;

/// Everything a component may ask of the system around it. The services outlive the component.
struct Platform {
    Clock& clock;
    Conversions& conversions;
    Desktop& desktop;
    EventLog& eventLog;
    FileSystem& files;
    HostApplication& host;
    MessageLoop& messages;
    RegistryStore& registry;
    Screen& screen;
    SystemErrors& errors;
};

}  // namespace kwo::platform
