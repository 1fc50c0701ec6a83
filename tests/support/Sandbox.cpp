#include "support/Sandbox.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace tollbeam::test {

namespace {

constexpr uid_t kNobody = 65534;

}  // namespace

Folder::Folder() {
  // Also for the ordinary user that root becomes.
  if (!dir_.isValid() || ::chmod(path().c_str(), 0777) != 0) std::abort();
}

std::string Folder::path() const { return dir_.path().toStdString(); }

std::vector<std::string> Folder::names() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(path())) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

Environment::Environment(const char* variable, const std::optional<std::string>& value)
    : variable_(variable) {
  if (const char* before = std::getenv(variable)) before_ = before;
  if (value) {
    ::setenv(variable, value->c_str(), 1);
  } else {
    ::unsetenv(variable);
  }
}

Environment::~Environment() {
  if (before_) {
    ::setenv(variable_, before_->c_str(), 1);
  } else {
    ::unsetenv(variable_);
  }
}

OrdinaryUser::OrdinaryUser() : wasRoot_(::geteuid() == 0) {
  if (wasRoot_ && ::seteuid(kNobody) != 0) std::abort();
}

OrdinaryUser::~OrdinaryUser() {
  if (wasRoot_ && ::seteuid(0) != 0) std::abort();
}

std::optional<std::string> bytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(file), {});
}

void put(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

void putAtomically(const std::string& path, const std::string& bytes) {
  put(path + ".new", bytes);
  std::filesystem::rename(path + ".new", path);
}

}  // namespace tollbeam::test
