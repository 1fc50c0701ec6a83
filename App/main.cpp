// Puts the program together: the backends, then the shell.
#include <QApplication>
#include <QFileInfo>
#include <QIcon>
#include <QSessionManager>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>

#include "history/HistoryStore.h"
#include "platform/Platform.h"
#include "platform/freedesktop/appearance/DesktopAppearance.h"
#include "platform/freedesktop/application/AutostartEntry.h"
#include "platform/freedesktop/application/BundleFolder.h"
#include "platform/freedesktop/application/QtSavePanels.h"
#include "platform/freedesktop/bus/Bus.h"
#include "platform/freedesktop/defaults/JsonUserDefaults.h"
#include "platform/freedesktop/files/FolderLock.h"
#include "platform/freedesktop/files/PosixFileManager.h"
#include "platform/freedesktop/notifications/DesktopNotificationCenter.h"
#include "platform/freedesktop/power/FreedesktopPowerSources.h"
#include "platform/freedesktop/power/PowerProfilesProcessInfo.h"
#include "platform/freedesktop/session/ExitHook.h"
#include "platform/freedesktop/session/LocalCalendar.h"
#include "platform/freedesktop/session/LogindWorkspace.h"
#include "platform/freedesktop/session/QtMainQueue.h"
#include "platform/freedesktop/session/SingleInstance.h"
#include "platform/freedesktop/session/SleepHold.h"
#include "platform/freedesktop/session/SystemClock.h"
#include "platform/freedesktop/session/TerminationSignals.h"
#include "platform/freedesktop/sounds/DesktopSounds.h"
#include "platform/freedesktop/statusbar/FreedesktopStatusBar.h"
#include "platform/freedesktop/x11/X11Compositor.h"
#include "platform/freedesktop/x11/X11OutsideClicks.h"
#include "texts/Translations.h"
#include "ui/shell/AlertDialogs.h"
#include "ui/shell/AppDelegate.h"

namespace tollbeam {
namespace {

// A native Wayland window cannot be placed beside the panel; one of XWayland can. The user's own
// choice counts more.
void preferPlaceableWindows() {
  if (!qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
    qputenv("QT_QPA_PLATFORM", "xcb;wayland");
  }
}

// Launch at Login alone decides whether the next session starts the program.
void keepOutOfSavedSessions(const QApplication& app) {
  const auto forbid = [](QSessionManager& session) {
    session.setRestartHint(QSessionManager::RestartNever);
  };
  QObject::connect(&app, &QGuiApplication::commitDataRequest, forbid);
  QObject::connect(&app, &QGuiApplication::saveStateRequest, forbid);
}

class Program {
 public:
  /// `sessionBus` outlives this object.
  explicit Program(Bus& sessionBus) : sessionBus_(sessionBus) {
    QApplication::setWindowIcon(QIcon(QString::fromStdString(icon())));
  }

  /// Starts the shell once the services have given their first answers, or after a limited time:
  /// the first refresh must see what holds at launch, because that is never announced.
  void launch() {
    powerSourcesReady_ = powerSources_.whenReady(
        [this] { processInfoReady_ = processInfo_.whenReady([this] { finishLaunching(); }); });
  }

  /// Opens the popover. Not during the launch: a second start in that time is the session's own.
  void activate() {
    if (delegate_) delegate_->showPopover();
  }

 private:
  void finishLaunching() {
    delegate_.emplace(Platform{.mainQueue = mainQueue_,
                               .clock = clock_,
                               .calendar = calendar_,
                               .fileManager = files_,
                               .userDefaults = userDefaults_,
                               .mainBundle = bundle_,
                               .powerSources = powerSources_,
                               .processInfo = processInfo_,
                               .workspace = workspace_,
                               .notificationCenter = notificationCenter_,
                               .dialogs = dialogs_,
                               .systemSounds = systemSounds_,
                               .loginItem = loginItem_,
                               .appearance = appearance_,
                               .compositor = compositor_},
                      statusBar_, outsideClicks_);
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, &*delegate_,
                     &AppDelegate::applicationWillTerminate);
    // A session that ends may take the display away before it asks the program to end.
    QObject::connect(qApp, &QGuiApplication::commitDataRequest, &*delegate_,
                     [this] { saveHistory(); });
    delegate_->applicationDidFinishLaunching();
  }

  void saveHistory() {
    if (delegate_) delegate_->model().history().save(clock_.now());
  }

  [[nodiscard]] DesktopNotificationCenter::Options notificationOptions() {
    return {.look = {.icon = icon(),
                     .soundFile = [this](const auto& name) { return systemSounds_.fileOf(name); }},
            .playSound = [this](const NotificationSound& sound) {
              if (!sound.name) return systemSounds_.playDefault();
              systemSounds_.play(*sound.name);
            }};
  }

  /// The bundle's own, because a bundle that was not installed has none in the icon theme.
  [[nodiscard]] std::string icon() const {
    const std::string file =
        bundle_.resources() + "/icons/hicolor/scalable/apps/org.tollbeam.Tollbeam.svg";
    return QFileInfo::exists(QString::fromStdString(file)) ? file : "org.tollbeam.Tollbeam";
  }

  // In the order in which they need each other; taken apart in reverse.
  Bus& sessionBus_;
  Bus systemBus_{QDBusConnection::SystemBus};
  DesktopAppearance appearance_{sessionBus_};
  QtMainQueue mainQueue_;
  SystemClock clock_;
  LocalCalendar calendar_;
  PosixFileManager files_;
  BundleFolder bundle_{files_, BundleFolder::runningExecutable()};
  Translations translations_{QString::fromStdString(bundle_.resources() + "/translations")};
  JsonUserDefaults userDefaults_{files_, JsonUserDefaults::defaultPath()};
  LogindWorkspace workspace_{systemBus_};
  SleepHold sleepHold_{workspace_};
  FreedesktopPowerSources powerSources_{systemBus_, sleepHold_};
  PowerProfilesProcessInfo processInfo_{systemBus_, sleepHold_};
  DesktopSounds systemSounds_{
      std::filesystem::path(bundle_.executable()).replace_filename("tollbeam-sound"),
      bundle_.resources() + "/sounds/tollbeam"};
  DesktopNotificationCenter notificationCenter_{sessionBus_, mainQueue_, notificationOptions()};
  AutostartEntry loginItem_{files_, bundle_.executable()};
  X11Compositor compositor_;
  QtSavePanels savePanels_;
  AlertDialogs dialogs_{appearance_, compositor_, savePanels_};
  X11OutsideClicks outsideClicks_;
  FreedesktopStatusBar statusBar_{sessionBus_,
                                  QString::fromStdString(bundle_.resources() + "/icons")};
  Subscription powerSourcesReady_;
  Subscription processInfoReady_;
  std::optional<AppDelegate> delegate_;
  // The history is plain memory and plain files: it can be saved without Qt.
  ExitHook displayIsGone_{[this] { saveHistory(); }};
};

/// False when a program in another session of this user, which has a bus of its own, holds the
/// history. One that is about to end gets a second.
bool takeHistory(FileManager& files, FolderLock& lock) {
  const auto folder = HistoryStore::folder(files);
  if (!folder) return true;
  files.createDirectory(*folder);
  return lock.take(*folder, std::chrono::seconds(1));
}

int run(int argc, char** argv) {
  // First, so that no write that is too large ends the program.
  PosixFileManager files;
  TerminationSignals signals;
  preferPlaceableWindows();
  const QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Tollbeam"));
  QApplication::setDesktopFileName(QStringLiteral("org.tollbeam.Tollbeam"));
  QApplication::setQuitOnLastWindowClosed(false);
  keepOutOfSavedSessions(app);
  signals.watch();

  FolderLock lock;
  // Outlives the program, which closes its notifications over it at the end.
  Bus sessionBus(QDBusConnection::SessionBus);
  std::optional<Program> program;
  const auto launch = [&] {
    if (!takeHistory(files, lock)) return QCoreApplication::quit();
    program.emplace(sessionBus).launch();
  };
  SingleInstance instance(sessionBus);
  instance.onActivate = [&] {
    if (program) program->activate();
  };
  instance.begin(launch, &QCoreApplication::quit);
  return QApplication::exec();
}

}  // namespace
}  // namespace tollbeam

int main(int argc, char** argv) { return tollbeam::run(argc, argv); }
