#include "platform/freedesktop/statusbar/sni/StatusHost.h"

#include <gtest/gtest.h>

namespace tollbeam {
namespace {

StatusHost hostOf(const char* process, const char* desktop = "") {
  return statusHostFor(QLatin1String(process), QLatin1String(desktop));
}

TEST(StatusHost, FollowsFromTheWatchersProcess) {
  EXPECT_EQ(hostOf("panel-3-systray"), StatusHost::Xfce);
  EXPECT_EQ(hostOf("panel-12-systra"), StatusHost::Xfce);
  EXPECT_EQ(hostOf("lxqt-panel"), StatusHost::Lxqt);
  EXPECT_EQ(hostOf("notification-ar"), StatusHost::Mate);
  EXPECT_EQ(hostOf("kded5"), StatusHost::Plasma);
  EXPECT_EQ(hostOf("kded6"), StatusHost::Plasma);
  EXPECT_EQ(hostOf("gnome-shell"), StatusHost::Gnome);
  EXPECT_EQ(hostOf("xapp-sn-watcher"), StatusHost::Cinnamon);
  EXPECT_EQ(hostOf("waybar"), StatusHost::Waybar);
}

TEST(StatusHost, ProcessTakesPrecedenceOverTheDesktopsName) {
  EXPECT_EQ(hostOf("waybar", "GNOME"), StatusHost::Waybar);
  EXPECT_EQ(hostOf("lxqt-panel", "XFCE"), StatusHost::Lxqt);
}

TEST(StatusHost, FollowsFromTheDesktopWhereTheProcessIsUnknown) {
  EXPECT_EQ(hostOf("something", "ubuntu:GNOME"), StatusHost::Gnome);
  EXPECT_EQ(hostOf("", "XFCE"), StatusHost::Xfce);
  EXPECT_EQ(hostOf("something", "Budgie:GNOME"), StatusHost::Budgie);
  EXPECT_EQ(hostOf("something", "Enlightenment"), StatusHost::Other);
}

TEST(StatusHost, FollowsFromTheDesktopForXappsWatcher) {
  EXPECT_EQ(hostOf("xapp-sn-watcher", "MATE"), StatusHost::Mate);
  EXPECT_EQ(hostOf("xapp-sn-watcher", "X-Cinnamon"), StatusHost::Cinnamon);
}

}  // namespace
}  // namespace tollbeam
