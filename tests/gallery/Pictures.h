// The pictures of the gallery: each is a window of the program in one state, fed from recorded
// data.
#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tollbeam::gallery {

struct Picture {
  std::string name;
  /// Shows the picture's window, which lives as long as the result.
  std::function<std::shared_ptr<QWidget>()> show;
};

[[nodiscard]] std::vector<Picture> chartPictures();
[[nodiscard]] std::vector<Picture> popoverPictures();
[[nodiscard]] std::vector<Picture> settingsPictures();

}  // namespace tollbeam::gallery
