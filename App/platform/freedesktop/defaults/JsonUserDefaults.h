// The settings in one JSON file that people and programs may edit while Tollbeam runs. What others
// write is taken over and told; a value set here goes into the file as it is at that moment, so
// that nobody's other keys are lost.
//
// A damaged file is never overwritten: it is renamed to "….damaged" and the defaults are in force.
// One that is damaged while we run gets a second first, because an editor may be writing it. A file
// that cannot be read is left alone. Values that cannot be stored yet count all the same and are
// stored when the file changes, with the next value, or when the object ends. Main thread only.
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
  enum class State { missing, unreadable, damaged, good };
  struct Stored {
    State state = State::missing;
    Dictionary values;
  };

  [[nodiscard]] Stored read() const;
  /// As `read`, but a damaged file has been set aside and counts as missing; where that fails it
  /// counts as unreadable.
  Stored readOrSetAside();
  /// Takes over what the file holds now, unless it is damaged: then its time begins to run.
  void synchronize();
  /// Adds to the file what was set here.
  void takeOver(const Stored& file);
  void adopt(Dictionary values);

  FileManager& files_;
  std::optional<std::string> path_;
  Dictionary values_;
  /// Set here and not in the file yet.
  Dictionary unsaved_;
  Observers<> observers_;
  bool telling_ = false;
  QObject context_;
  QTimer damageStands_;
  std::unique_ptr<FileWatch> watch_;
};

}  // namespace tollbeam
