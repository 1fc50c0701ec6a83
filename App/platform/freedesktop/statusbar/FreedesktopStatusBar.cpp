#include "platform/freedesktop/statusbar/FreedesktopStatusBar.h"

#include <QCursor>
#include <QDir>
#include <QGuiApplication>
#include <QMenu>
#include <QPalette>
#include <QScreen>
#include <QTimer>
#include <chrono>
#include <optional>

#include "platform/freedesktop/statusbar/PanelThemeWatch.h"
#include "platform/freedesktop/statusbar/sni/DBusMenu.h"
#include "platform/freedesktop/statusbar/sni/StatusFace.h"
#include "platform/freedesktop/statusbar/sni/StatusNotifierItem.h"
#include "platform/freedesktop/statusbar/sni/WatcherMonitor.h"
#include "platform/freedesktop/statusbar/xembed/PanelColour.h"
#include "platform/freedesktop/statusbar/xembed/XEmbedIcon.h"

namespace tollbeam {
namespace {

using namespace std::chrono_literals;
using Kind = StatusMenuEntry::Kind;
using Presence = WatcherMonitor::Presence;

// A panel takes an item before it has painted itself, and a change of theme takes it a while. So
// its colour is read several times, each time after twice the delay: 0.5, 1, 2 and 4 seconds.
constexpr auto kFirstDelay = 500ms;
constexpr auto kLastDelay = 4s;

// Decides where the item is shown, and passes the content there.
class FreedesktopStatusItem final : public QObject, public StatusItem {
 public:
  FreedesktopStatusItem(Bus& sessionBus, QString iconThemePath, Actions actions);

  void setContent(const StatusItemContent& content) override;

 private:
  void followTray();
  [[nodiscard]] StatusHostTraits traits() const { return traitsOf(watcher_.host()); }
  [[nodiscard]] bool belongsInTray() const;
  void arrange();
  void showOnBus();
  void refresh();
  void refreshOnBus();
  void expectOtherColours();
  void readColoursAgain();
  [[nodiscard]] bool hostNeedsColour() const;
  [[nodiscard]] QColor colourOnHost() const;
  [[nodiscard]] std::optional<ClickPosition> pointer() const;
  void choose(Kind kind);
  void popUpMenu(QPoint physical);

  [[nodiscard]] static std::optional<ClickPosition> at(QPoint reported);

  Actions actions_;
  QString iconThemePath_;
  StatusItemContent content_;
  Symbols symbols_;
  std::optional<XServer> xServer_ = XServer::ofApplication();
  WatcherMonitor watcher_;
  DBusMenu dbusMenu_{[this](Kind kind) { choose(kind); }};
  StatusNotifierItem onBus_;
  std::optional<TrayOwner> tray_;
  std::optional<XEmbedIcon> inTray_;
  bool trayRefused_ = false;
  std::unique_ptr<QMenu> menu_;
  PanelThemeWatch themes_;
  QTimer colourTimer_;
};

FreedesktopStatusItem::FreedesktopStatusItem(Bus& sessionBus, QString iconThemePath,
                                             Actions actions)
    : actions_(std::move(actions)),
      iconThemePath_(std::move(iconThemePath)),
      watcher_(sessionBus),
      onBus_(sessionBus,
             {[this](QPoint p) { actions_.activate(traits().givesPosition ? at(p) : pointer()); },
              [this](QPoint p) { popUpMenu(p); }},
             dbusMenu_),
      themes_(sessionBus) {
  connect(&watcher_, &WatcherMonitor::changed, this, [this] {
    onBus_.hide();
    themes_.follow(watcher_.host());
    arrange();
  });
  connect(&watcher_, &WatcherMonitor::hostRegistered, this, [this] {
    if (onBus_.shown()) showOnBus();
  });
  colourTimer_.setSingleShot(true);
  colourTimer_.callOnTimeout(this, [this] { readColoursAgain(); });
  connect(&themes_, &PanelThemeWatch::maybeChanged, this, [this] { expectOtherColours(); });
  if (xServer_) followTray();
  dbusMenu_.setEntries(statusMenu({}));
}

void FreedesktopStatusItem::followTray() {
  tray_.emplace(*xServer_);
  inTray_.emplace(*xServer_, *tray_, symbols_,
                  XEmbedIcon::Handlers{[this](QPoint p) { actions_.activate(at(p)); },
                                       [this](QPoint p) { popUpMenu(p); }});
  connect(&*tray_, &TrayOwner::ownerChanged, this, [this] {
    trayRefused_ = false;
    inTray_->leave();
    arrange();
  });
  connect(&*inTray_, &XEmbedIcon::docked, this, [this] { expectOtherColours(); });
  connect(&*inTray_, &XEmbedIcon::refused, this, [this] {
    trayRefused_ = true;
    arrange();
  });
}

void FreedesktopStatusItem::setContent(const StatusItemContent& content) {
  if (content == content_) return;
  content_ = content;
  const auto lines =
      QString::fromStdString(content.toolTip).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
  dbusMenu_.setEntries(statusMenu(lines));
  refresh();
}

bool FreedesktopStatusItem::belongsInTray() const {
  if (!tray_ || tray_->window() == XCB_WINDOW_NONE || trayRefused_) return false;
  return watcher_.presence() == Presence::Absent || traits().prefersXEmbed;
}

void FreedesktopStatusItem::arrange() {
  if (watcher_.presence() == Presence::NotYetKnown) return;
  if (belongsInTray()) {
    onBus_.hide();
    colourTimer_.stop();
    refresh();
    inTray_->dock();
    return;
  }
  if (inTray_) inTray_->leave();
  if (watcher_.presence() == Presence::Present)
    showOnBus();
  else
    onBus_.hide();
}

void FreedesktopStatusItem::showOnBus() {
  refreshOnBus();
  if (onBus_.show()) expectOtherColours();
}

void FreedesktopStatusItem::refresh() {
  if (belongsInTray())
    inTray_->setContent(firstSymbol(content_, symbols_), besideText(content_),
                        QString::fromStdString(content_.toolTip));
  else if (onBus_.shown())
    refreshOnBus();
}

void FreedesktopStatusItem::refreshOnBus() {
  onBus_.setFace(faceFor(content_, traits(), iconThemePath_, colourOnHost(), symbols_));
}

void FreedesktopStatusItem::expectOtherColours() {
  if ((inTray_ && inTray_->isDocked()) || (xServer_ && hostNeedsColour()))
    colourTimer_.start(kFirstDelay);
}

void FreedesktopStatusItem::readColoursAgain() {
  if (inTray_) inTray_->redraw();
  if (onBus_.shown()) refreshOnBus();
  const auto next = colourTimer_.intervalAsDuration() * 2;
  if (next <= kLastDelay) colourTimer_.start(next);
}

// Whether the panel shows our pixmap unchanged, on a ground whose colour is read from the screen.
bool FreedesktopStatusItem::hostNeedsColour() const {
  return !traits().darkPanel && (!traits().recoloursIcon || iconThemePath_.isEmpty());
}

QColor FreedesktopStatusItem::colourOnHost() const {
  if (traits().darkPanel) return kOnDarkPanel;
  if (hostNeedsColour() && xServer_) {
    if (const auto panel = panelColour(*xServer_)) return colourOn(*panel);
  }
  return QGuiApplication::palette().color(QPalette::WindowText);
}

// Under X11 the pointer is where the click was, on every desktop; the place that panels report is
// not always right. Under Wayland programs do not know the pointer.
std::optional<ClickPosition> FreedesktopStatusItem::at(QPoint reported) {
  if (QGuiApplication::platformName() == QStringLiteral("xcb") &&
      qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
    const QPoint pointer = QCursor::pos();
    return ClickPosition{pointer.x(), pointer.y()};
  }
  // Panels that do not know the place report the corner.
  if (reported.isNull()) return std::nullopt;
  const double ratio = QGuiApplication::primaryScreen()->devicePixelRatio();
  return ClickPosition{qRound(reported.x() / ratio), qRound(reported.y() / ratio)};
}

std::optional<ClickPosition> FreedesktopStatusItem::pointer() const {
  return xServer_ ? at(xServer_->pointer()) : std::nullopt;
}

void FreedesktopStatusItem::choose(Kind kind) {
  if (kind == Kind::Open) actions_.activate(pointer());
  if (kind == Kind::Settings) actions_.openSettings();
  if (kind == Kind::Quit) actions_.quit();
}

void FreedesktopStatusItem::popUpMenu(QPoint physical) {
  // A new one each time: the old one may still be closing when its entries have changed.
  menu_ = std::make_unique<QMenu>();
  for (const auto& entry : dbusMenu_.entries()) {
    if (entry.kind == Kind::Separator) {
      menu_->addSeparator();
      continue;
    }
    auto* action =
        menu_->addAction(QString(entry.label).replace(QLatin1Char('&'), QLatin1String("&&")));
    action->setEnabled(entry.enabled());
    connect(action, &QAction::triggered, this, [this, kind = entry.kind] { choose(kind); });
  }
  menu_->popup(xServer_ ? logicalPosition(physical) : physical);
}

}  // namespace

FreedesktopStatusBar::FreedesktopStatusBar(Bus& sessionBus, QString iconThemePath)
    : sessionBus_(sessionBus), iconThemePath_(std::move(iconThemePath)) {
  // A panel that is given a missing folder shows a broken image.
  if (!QDir(iconThemePath_).exists()) iconThemePath_.clear();
}

std::unique_ptr<StatusItem> FreedesktopStatusBar::createStatusItem(StatusItem::Actions actions) {
  return std::make_unique<FreedesktopStatusItem>(sessionBus_, iconThemePath_, std::move(actions));
}

}  // namespace tollbeam
