#include "Pictures.h"
#include "platform/recorded/RecordedPlatform.h"
#include "ui/PopoverView.h"

namespace tollbeam::gallery {

namespace {

constexpr Date kNow{1'763'648'400};  // 20 November 2025, 14:20 UTC

struct Scene {
  RecordedPlatform platform{kNow};
  Style style{platform.appearance};
  std::unique_ptr<AppModel> model;
  std::unique_ptr<PopoverView> view;
};

std::shared_ptr<QWidget> shown(Dictionary battery, Dictionary properties) {
  auto scene = std::make_shared<Scene>();
  scene->platform.powerSources.table = List{std::move(battery)};
  scene->platform.powerSources.properties = std::move(properties);
  scene->model = std::make_unique<AppModel>(scene->platform.ports());
  scene->model->start();
  scene->view =
      std::make_unique<PopoverView>(*scene->model, scene->platform.ports(), scene->style, [] {});
  scene->view->show();
  return {scene, scene->view.get()};
}

}  // namespace

std::vector<Picture> popoverPictures() {
  return {{"popover-on-battery", [] {
             return shown(
                 {{"Type", "InternalBattery"}, {"Current Capacity", 64}, {"Max Capacity", 100}},
                 {{"CycleCount", 212}});
           }}};
}

}  // namespace tollbeam::gallery
