// The operating system as the program sees it: one reference per port. Whoever builds it keeps the
// backends alive for as long as anything uses it.
#pragma once

namespace tollbeam {

class Appearance;
class Calendar;
class Clock;
class Compositor;
class Dialogs;
class FileManager;
class LoginItem;
class MainBundle;
class MainQueue;
class NotificationCenter;
class PowerSources;
class ProcessInfo;
class SystemSounds;
class UserDefaults;
class Workspace;

struct Platform {
  MainQueue& mainQueue;
  Clock& clock;
  Calendar& calendar;
  FileManager& fileManager;
  UserDefaults& userDefaults;
  MainBundle& mainBundle;
  PowerSources& powerSources;
  ProcessInfo& processInfo;
  Workspace& workspace;
  NotificationCenter& notificationCenter;
  Dialogs& dialogs;
  SystemSounds& systemSounds;
  LoginItem& loginItem;
  Appearance& appearance;
  Compositor& compositor;
};

}  // namespace tollbeam
