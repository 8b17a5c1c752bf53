#pragma once
// The per-network key file: colours pinned to categories. It sits beside the
// network file with the extension "keys" (a/net.txt -> a/net.keys) and is an
// XML property list whose top <dict> maps category values to colour keys of
// "somecolors.clr":
//   <plist version="1.0"><dict>
//     <key>Physics</key><string>azure</string>
//   </dict></plist>
#include <filesystem>
#include <string>
#include <unordered_map>

namespace colour {

// Category value -> colour key.
using CategoryKeys = std::unordered_map<std::string, std::string>;

std::filesystem::path keyFileForNetworkFile(const std::filesystem::path& networkFile);

// The string entries of the file's top dictionary; entries of other types are
// skipped. A missing file gives no entries, silently; an unreadable or
// malformed one gives no entries and a log line with the file, line and reason.
CategoryKeys readKeyFile(const std::filesystem::path& file);

// Logs "FILE::<key file path>" and reads the key file of `networkFile`. A
// network without a file (empty path) has no key file and logs nothing.
CategoryKeys categoryKeysForNetworkFile(const std::filesystem::path& networkFile);

}  // namespace colour
