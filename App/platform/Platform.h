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

/// Every port, for the part of the program that hands them out. The backends outlive it.
struct Platform {
  MainQueue& mainQueue;                    ///< see MainQueue
  Clock& clock;                            ///< see Clock
  Calendar& calendar;                      ///< see Calendar
  FileManager& fileManager;                ///< see FileManager
  UserDefaults& userDefaults;              ///< see UserDefaults
  MainBundle& mainBundle;                  ///< see MainBundle
  PowerSources& powerSources;              ///< see PowerSources
  ProcessInfo& processInfo;                ///< see ProcessInfo
  Workspace& workspace;                    ///< see Workspace
  NotificationCenter& notificationCenter;  ///< see NotificationCenter
  Dialogs& dialogs;                        ///< see Dialogs
  SystemSounds& systemSounds;              ///< see SystemSounds
  LoginItem& loginItem;                    ///< see LoginItem
  Appearance& appearance;                  ///< see Appearance
  Compositor& compositor;                  ///< see Compositor
};

}  // namespace tollbeam
