#include "platform/freedesktop/statusbar/FreedesktopStatusItem.h"

#include <QGuiApplication>
#include <QMenu>
#include <QPalette>
#include <chrono>

#include "platform/freedesktop/statusbar/sni/StatusFace.h"
#include "platform/freedesktop/statusbar/xembed/PanelColour.h"

namespace tollbeam {
namespace {

using namespace std::chrono_literals;

// A panel takes an item before it has painted itself, and a change of theme takes it a while. So we
// look at it a few times, each time after twice the wait: 0.5, 1, 2 and 4 seconds.
constexpr auto kFirstLook = 500ms;
constexpr auto kLastLook = 4s;

}  // namespace

FreedesktopStatusItem::FreedesktopStatusItem(Bus& sessionBus, QString iconThemePath,
                                             Actions actions)
    : actions_(std::move(actions)),
      iconThemePath_(std::move(iconThemePath)),
      xServer_(XServer::ofApplication()),
      watcher_(sessionBus),
      dbusMenu_([this](StatusMenuEntry::Kind kind) { choose(kind); }),
      onBus_(sessionBus,
             {[this](int x, int y) { activate(x, y); },
              [this](int x, int y) {
                popUpMenu({x, y});
              }},
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
  lookAgain_.setSingleShot(true);
  connect(&lookAgain_, &QTimer::timeout, this, [this] {
    if (inTray_) inTray_->redraw();
    if (onBus_.shown()) refreshOnBus();
    lookAgainSoon();
  });
  connect(&themes_, &PanelThemeWatch::maybeChanged, this,
          &FreedesktopStatusItem::expectOtherColours);
  if (xServer_) {
    tray_ = std::make_unique<TrayOwner>(*xServer_);
    inTray_ =
        std::make_unique<XEmbedIcon>(*xServer_, *tray_, symbols_,
                                     XEmbedIcon::Handlers{[this](QPoint p) {
                                                            actions_.activate({p.x(), p.y(), true});
                                                          },
                                                          [this](QPoint p) { popUpMenu(p); }});
    connect(tray_.get(), &TrayOwner::ownerChanged, this, [this] {
      trayRefused_ = false;
      inTray_->leave();
      arrange();
    });
    connect(inTray_.get(), &XEmbedIcon::docked, this, &FreedesktopStatusItem::expectOtherColours);
    connect(inTray_.get(), &XEmbedIcon::refused, this, [this] {
      trayRefused_ = true;
      arrange();
    });
  }
  dbusMenu_.setEntries(statusMenu(statusLines()));
  arrange();
}

FreedesktopStatusItem::~FreedesktopStatusItem() = default;

void FreedesktopStatusItem::setContent(const StatusItemContent& content) {
  if (content == content_) return;
  content_ = content;
  dbusMenu_.setEntries(statusMenu(statusLines()));
  refresh();
}

bool FreedesktopStatusItem::trayComesFirst() const {
  if (!tray_ || tray_->window() == XCB_WINDOW_NONE || trayRefused_) return false;
  return watcher_.presence() == WatcherMonitor::Presence::Absent ||
         traitsOf(watcher_.host()).prefersXEmbed;
}

void FreedesktopStatusItem::arrange() {
  if (watcher_.presence() == WatcherMonitor::Presence::NotYetKnown) return;
  if (trayComesFirst()) {
    onBus_.hide();
    lookAgain_.stop();
    refresh();
    inTray_->dock();
    return;
  }
  if (inTray_) inTray_->leave();
  if (watcher_.presence() == WatcherMonitor::Presence::Present)
    showOnBus();
  else
    onBus_.hide();
}

void FreedesktopStatusItem::showOnBus() {
  refreshOnBus();
  if (onBus_.show()) expectOtherColours();
}

void FreedesktopStatusItem::refresh() {
  if (trayComesFirst())
    inTray_->setContent(firstSymbol(content_, symbols_), besideText(content_),
                        QString::fromStdString(content_.toolTip));
  else if (onBus_.shown())
    refreshOnBus();
}

void FreedesktopStatusItem::refreshOnBus() {
  onBus_.setFace(
      faceFor(content_, traitsOf(watcher_.host()), iconThemePath_, colourOnHost(), symbols_));
}

void FreedesktopStatusItem::expectOtherColours() {
  const bool inTray = inTray_ && inTray_->state() == XEmbedIcon::State::Docked;
  if (xServer_ && (inTray || hostNeedsColour())) lookAgain_.start(kFirstLook);
}

void FreedesktopStatusItem::lookAgainSoon() {
  const auto next = lookAgain_.intervalAsDuration() * 2;
  if (next <= kLastLook) lookAgain_.start(next);
}

// Whether the panel shows our pixmap as it is, on a ground that we must look at.
bool FreedesktopStatusItem::hostNeedsColour() const {
  const auto traits = traitsOf(watcher_.host());
  return !traits.darkPanel && (!traits.recoloursIcon || iconThemePath_.isEmpty());
}

QColor FreedesktopStatusItem::colourOnHost() const {
  if (traitsOf(watcher_.host()).darkPanel) return colourOnDark();
  if (hostNeedsColour() && xServer_) {
    if (const auto panel = panelColour(*xServer_)) return colourOn(*panel);
  }
  return QGuiApplication::palette().color(QPalette::WindowText);
}

QStringList FreedesktopStatusItem::statusLines() const {
  return QString::fromStdString(content_.toolTip).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void FreedesktopStatusItem::activate(int x, int y) {
  if (traitsOf(watcher_.host()).tellsPosition) {
    actions_.activate({x, y, true});
  } else if (xServer_) {
    const auto pointer = xServer_->pointer();
    actions_.activate({pointer.x(), pointer.y(), true});
  } else {
    actions_.activate({});
  }
}

void FreedesktopStatusItem::choose(StatusMenuEntry::Kind kind) {
  switch (kind) {
    case StatusMenuEntry::Kind::Open:
      if (xServer_) {
        const auto pointer = xServer_->pointer();
        actions_.activate({pointer.x(), pointer.y(), true});
      } else {
        actions_.activate({});
      }
      break;
    case StatusMenuEntry::Kind::Settings:
      actions_.openSettings();
      break;
    case StatusMenuEntry::Kind::Quit:
      actions_.quit();
      break;
    case StatusMenuEntry::Kind::Status:
    case StatusMenuEntry::Kind::Separator:
      break;
  }
}

void FreedesktopStatusItem::popUpMenu(QPoint physical) {
  // A new one each time: the old may still be on its way out when its entries have changed.
  menu_ = std::make_unique<QMenu>();
  for (const auto& entry : statusMenu(statusLines())) {
    if (entry.kind == StatusMenuEntry::Kind::Separator) {
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

}  // namespace tollbeam
