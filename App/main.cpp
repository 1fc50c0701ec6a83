// Puts the program together: the backends in the order in which they need each other, then the
// shell. Taken apart in reverse.
#include <QApplication>
#include <QFileInfo>
#include <QIcon>
#include <QSessionManager>
#include <chrono>
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
#include "platform/freedesktop/files/Links.h"
#include "platform/freedesktop/files/PosixFileManager.h"
#include "platform/freedesktop/notifications/DesktopNotificationCenter.h"
#include "platform/freedesktop/power/FreedesktopPowerSources.h"
#include "platform/freedesktop/power/PowerProfilesProcessInfo.h"
#include "platform/freedesktop/session/ExitHook.h"
#include "platform/freedesktop/session/LocalCalendar.h"
#include "platform/freedesktop/session/LogindWorkspace.h"
#include "platform/freedesktop/session/QtMainQueue.h"
#include "platform/freedesktop/session/SingleInstance.h"
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
  explicit Program(Bus& sessionBus)
      : appearance_(sessionBus),
        bundle_(files_, BundleFolder::runningExecutable()),
        translations_(QString::fromStdString(bundle_.resources() + "/translations")),
        userDefaults_(files_, JsonUserDefaults::defaultPath()),
        workspace_(systemBus_),
        powerSources_(systemBus_, workspace_),
        processInfo_(systemBus_, workspace_),
        systemSounds_(folderOf(bundle_.executable()) + "tollbeam-sound",
                      bundle_.resources() + "/sounds/tollbeam"),
        notificationCenter_(sessionBus, mainQueue_, notificationOptions()),
        loginItem_(files_, BundleFolder::runningExecutable()),
        statusBar_(sessionBus, QString::fromStdString(bundle_.resources() + "/icons")) {
    QApplication::setWindowIcon(QIcon(QString::fromStdString(icon())));
  }

  /// What holds at launch is never announced, so the first look must see it: it waits for the
  /// services' first answers, which are bounded in time.
  void launch() {
    powerSourcesReady_ = powerSources_.whenReady(
        [this] { processInfoReady_ = processInfo_.whenReady([this] { finishLaunching(); }); });
  }

  /// A second start during the launch is the session's: it asks for nothing.
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
    // A session that ends may take the display away before anything else is asked of us.
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
              if (sound.name) {
                systemSounds_.play(*sound.name);
              } else {
                systemSounds_.playDefault();
              }
            }};
  }

  /// The bundle's own, because a bundle that was not installed has none in the icon theme.
  [[nodiscard]] std::string icon() const {
    const std::string file =
        bundle_.resources() + "/icons/hicolor/scalable/apps/org.tollbeam.Tollbeam.svg";
    return QFileInfo::exists(QString::fromStdString(file)) ? file : "org.tollbeam.Tollbeam";
  }

  Bus systemBus_{QDBusConnection::SystemBus};
  DesktopAppearance appearance_;
  QtMainQueue mainQueue_;
  SystemClock clock_;
  LocalCalendar calendar_;
  PosixFileManager files_;
  BundleFolder bundle_;
  Translations translations_;
  JsonUserDefaults userDefaults_;
  LogindWorkspace workspace_;
  FreedesktopPowerSources powerSources_;
  PowerProfilesProcessInfo processInfo_;
  DesktopSounds systemSounds_;
  DesktopNotificationCenter notificationCenter_;
  AutostartEntry loginItem_;
  X11Compositor compositor_;
  QtSavePanels savePanels_;
  AlertDialogs dialogs_{appearance_, compositor_, savePanels_};
  X11OutsideClicks outsideClicks_;
  FreedesktopStatusBar statusBar_;
  Subscription powerSourcesReady_;
  Subscription processInfoReady_;
  std::optional<AppDelegate> delegate_;
  // The history is plain memory and plain files: it can be saved without Qt.
  ExitHook displayIsGone_{[this] { saveHistory(); }};
};

/// Two sessions of one user have a bus each, but one history. One that is about to end gets a
/// second.
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
  // The program takes its bubbles down at its end, over a bus that is still there.
  Bus sessionBus(QDBusConnection::SessionBus);
  std::optional<Program> program;
  SingleInstance instance(sessionBus);
  instance.onActivate = [&] {
    if (program) program->activate();
  };
  instance.begin(
      [&] {
        if (takeHistory(files, lock)) {
          program.emplace(sessionBus).launch();
        } else {
          QCoreApplication::quit();
        }
      },
      [] { QCoreApplication::quit(); });
  return QApplication::exec();
}

}  // namespace
}  // namespace tollbeam

int main(int argc, char** argv) { return tollbeam::run(argc, argv); }
