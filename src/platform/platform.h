#pragma once

namespace kwo::platform {

class Clock;
class ComponentFactory;
class Conversions;
class DebugOutput;
class Desktop;
class Drawing;
class EventLog;
class FileSystem;
class HostApplication;
class Keyboard;
class LocaleSource;
class LogFiles;
class MessageLoop;
class Mouse;
class NotificationArea;
class Pictures;
class ProcessMemory;
class Programs;
class RegistryStore;
class Screen;
class ScreenDrawing;
class SystemErrors;
class SystemFonts;
class SystemMetrics;
class TimerService;

/// Everything a component may ask of the system around it. The services outlive the component.
struct Platform {
    Clock& clock;
    ComponentFactory& components;
    Conversions& conversions;
    DebugOutput& debugOutput;
    Desktop& desktop;
    Drawing& drawing;
    EventLog& eventLog;
    FileSystem& files;
    HostApplication& host;
    Keyboard& keyboard;
    LocaleSource& locale;
    LogFiles& logFiles;
    MessageLoop& messages;
    Mouse& mouse;
    NotificationArea& notificationArea;
    Pictures& pictures;
    ProcessMemory& processMemory;
    Programs& programs;
    RegistryStore& registry;
    Screen& screen;
    ScreenDrawing& screenDrawing;
    SystemErrors& errors;
    SystemFonts& fonts;
    SystemMetrics& metrics;
    TimerService& timers;
};

}  // namespace kwo::platform
