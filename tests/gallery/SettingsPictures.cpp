#include "Pictures.h"
#include "platform/recorded/RecordedPlatform.h"
#include "ui/SettingsView.h"

namespace tollbeam::gallery {

namespace {

constexpr Date kNow{1'763'648'400};

struct Scene {
  RecordedPlatform platform{kNow};
  Style style{platform.appearance};
  AppModel model{platform.ports()};
  SettingsView view{model, platform.ports(), style};
};

}  // namespace

std::vector<Picture> settingsPictures() {
  return {{"settings-top", [] {
             auto scene = std::make_shared<Scene>();
             scene->view.resize(480, 720);
             scene->view.show();
             return std::shared_ptr<QWidget>(scene, &scene->view);
           }}};
}

}  // namespace tollbeam::gallery
