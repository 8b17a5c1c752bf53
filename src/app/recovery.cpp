#include "app/recovery.h"

#include <algorithm>
#include <fstream>
#include <system_error>

namespace fs = std::filesystem;

namespace app {
namespace {

fs::path lockPath(fs::path file) {
  return file.replace_extension(".lock");
}

fs::path notePath(fs::path file) {
  return file.replace_extension(".name");
}

}  // namespace

std::unique_ptr<QLockFile> claimAutosave(const fs::path& file) {
  auto lock = std::make_unique<QLockFile>(QString::fromStdString(lockPath(file).string()));
  // Held for as long as the document lives, however long that is: only a
  // lock whose program has gone counts as stale.
  lock->setStaleLockTime(0);
  if (!lock->tryLock(0)) return nullptr;
  return lock;
}

std::vector<RecoverableDocument> recoverableDocuments(const fs::path& folder) {
  std::vector<std::pair<fs::file_time_type, RecoverableDocument>> found;
  std::error_code failed;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, failed)) {
    if (entry.path().extension() != ".graphml" || !entry.is_regular_file(failed)) continue;
    // Taking the lock for a moment tells whether a running program holds it.
    if (!claimAutosave(entry.path())) continue;
    found.push_back(
        {entry.last_write_time(failed), {entry.path(), readRecoveryName(entry.path())}});
  }
  std::sort(found.begin(), found.end(),
            [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<RecoverableDocument> documents;
  for (auto& item : found) documents.push_back(std::move(item.second));
  return documents;
}

void writeRecoveryName(const fs::path& file, const std::string& displayName) {
  std::ofstream(notePath(file), std::ios::binary | std::ios::trunc) << displayName;
}

std::string readRecoveryName(const fs::path& file) {
  std::ifstream note(notePath(file), std::ios::binary);
  std::string name;
  std::getline(note, name, '\0');
  return name.empty() ? file.stem().string() : name;
}

void removeAutosave(const fs::path& file, std::unique_ptr<QLockFile>& lock) {
  std::error_code ignored;
  fs::remove(file, ignored);
  fs::remove(notePath(file), ignored);
  lock.reset();  // unlocks, which removes the lock file
}

}  // namespace app
