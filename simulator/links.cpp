#include "simulator/links.h"

#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace simulator {

namespace fs = std::filesystem;

namespace {

void make_link(const QString& path_text, const QString& target) {
  const fs::path path = path_text.toStdString();
  std::error_code error;
  const fs::file_type there = fs::symlink_status(path, error).type();
  if (there == fs::file_type::symlink) {
    fs::remove(path, error);
  } else if (there != fs::file_type::not_found) {
    throw std::runtime_error(path.string() + " exists and is no symbolic link");
  }
  fs::create_symlink(target.toStdString(), path, error);
  if (error) throw std::runtime_error("no link " + path.string() + ": " + error.message());
}

}  // namespace

Links::Links(const QStringList& paths, const QString& target) : target_(target) {
  try {
    for (const QString& path : paths) {
      make_link(path, target);
      paths_ << path;
    }
  } catch (const std::runtime_error&) {
    remove();
    throw;
  }
}

void Links::remove() {
  for (const QString& path_text : paths_) {
    const fs::path path = path_text.toStdString();
    std::error_code error;
    const bool ours = fs::read_symlink(path, error) == target_.toStdString() && !error;
    if (ours) fs::remove(path, error);
  }
  paths_.clear();
}

}  // namespace simulator
