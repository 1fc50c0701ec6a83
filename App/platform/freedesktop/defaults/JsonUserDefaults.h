// The settings in one JSON file that people and programs may edit while Tollbeam runs. Their
// changes take effect at once; a value set here is merged into the file as it is at that moment, so
// that nobody's other keys are lost.
//
// A damaged file is never overwritten: it is renamed to "….damaged" and the defaults are in force.
// One that is damaged while we run gets a second first, because an editor may be writing it. A file
// that cannot be read is left alone. Values that cannot be stored yet are in force all the same and
// are stored when the file changes, with the next value, or when the object ends. Main thread only.
#pragma once

#include <QObject>
#include <QTimer>
#include <memory>
#include <string>

#include "platform/FileManager.h"
#include "platform/UserDefaults.h"
#include "platform/freedesktop/files/FileWatch.h"

namespace tollbeam {

class JsonUserDefaults final : public UserDefaults {
 public:
  /// Makes the folder and reads the file. Without a path the values live as long as the object.
  JsonUserDefaults(FileManager& files, std::optional<std::string> path);
  ~JsonUserDefaults() override;

  /// Tollbeam/preferences.json in the user's configuration folder; absent when there is none.
  [[nodiscard]] static std::optional<std::string> defaultPath();

  void set(std::string_view key, Value value) override;
  Subscription onChange(std::function<void()> changed) override;

 protected:
  [[nodiscard]] const Value* stored(std::string_view key) const override;

 private:
  struct Stored {
    bool isDamaged = false;
    /// Empty when there is no file; absent when it cannot be read or is damaged.
    std::optional<Dictionary> values;
  };

  void createFolder();
  [[nodiscard]] Stored read() const;
  /// The values as `read` gives them, but a damaged file is set aside and then counts as missing.
  std::optional<Dictionary> readOrSetAside();
  /// Takes over the file's values, unless it is damaged: then it gets a second to be completed.
  void synchronize();
  /// Adds the unsaved values to those of the file and stores both; nothing when absent.
  void takeOver(const std::optional<Dictionary>& stored);
  /// Makes these and the unsaved values the ones in force, and notifies the observers of a change.
  void adopt(Dictionary values);

  FileManager& files_;
  std::optional<std::string> path_;
  Dictionary values_;
  /// Set here and not in the file yet.
  Dictionary unsaved_;
  Observers<> observers_;
  bool isNotifying_ = false;
  QObject context_;
  /// Runs while the file is damaged.
  QTimer damageTimer_;
  std::unique_ptr<FileWatch> watch_;
};

}  // namespace tollbeam
