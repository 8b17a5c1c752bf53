#pragma once
// Autosaves of documents that have no file of their own (untitled, or read
// from another tool's file) live in a recovery folder, each beside a lock
// that its running program holds and a note of the document's name. After a
// crash the lock is stale, and the autosave can be offered back.
#include <QLockFile>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace app {

struct RecoverableDocument {
  std::filesystem::path file;  // the autosaved GraphML document
  std::string displayName;     // the name its window showed
};

// Takes the lock of the autosave `file` for this process; null when a
// running program holds it. A lock left by a program that is gone is taken
// over.
std::unique_ptr<QLockFile> claimAutosave(const std::filesystem::path& file);

// The autosaves in `folder` that no running program holds, oldest first.
std::vector<RecoverableDocument> recoverableDocuments(const std::filesystem::path& folder);

// The note of the document's name kept beside an autosave.
void writeRecoveryName(const std::filesystem::path& file, const std::string& displayName);
std::string readRecoveryName(const std::filesystem::path& file);

// Removes the autosave, its note and (by releasing it) its lock.
void removeAutosave(const std::filesystem::path& file, std::unique_ptr<QLockFile>& lock);

}  // namespace app
