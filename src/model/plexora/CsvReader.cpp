// Reads an edge list in CSV, TSV or whitespace-separated form. The separator
// is taken from the first record (tab, comma, semicolon, else runs of blanks);
// fields may be quoted as RFC 4180 has it. Vertex names become "Name", the
// vertices numbered in order of first appearance; a numeric third column (or
// the column headed "weight") gives edge weights.
#include <algorithm>
#include <cctype>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "plexora/QLONetwork.h"
#include "plexora/formats.h"
#include "plexora/read_columns.h"
#include "plexora/vertex_ids.h"
#include "quillo/numbertext.h"

namespace plexora {
namespace {

enum class Separator { Comma, Tab, Semicolon, Blanks };

bool isBlank(char c) {
  return c == ' ' || c == '\t';
}

bool sameLetters(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(a[i])) != b[i]) return false;
  }
  return true;
}

class EdgeListReader {
 public:
  EdgeListReader(std::string_view text, const std::string& name, ReadError* error)
      : text_(text), failure_(name, error) {
    if (text_.substr(0, 3) == "\xEF\xBB\xBF") pos_ = 3;
  }

  QLONetwork::Ptr read() {
    NetworkData data;
    bool first = true;
    int weightColumn = 2;
    bool weightsChosen = false;
    while (nextRecord()) {
      if (failure_.failed()) return nullptr;
      if (fields_.empty()) continue;
      if (first) {
        first = false;
        if (isHeader(weightColumn)) {
          weightsChosen = weightColumn >= 0;
          if (!weightsChosen) weightColumn = 2;
          continue;
        }
      }
      const std::size_t source = static_cast<std::size_t>(sourceColumn_);
      const std::size_t target = static_cast<std::size_t>(targetColumn_);
      if (fields_.size() <= std::max(source, target)) {
        return fail(recordLine_, "a line needs a source and a target");
      }
      data.from.push_back(vertexOf(fields_[source]));
      data.to.push_back(vertexOf(fields_[target]));
      data.verticesCount = names_.size();
      if (data.verticesCount > maxReadVertices()) {
        return fail(recordLine_, "more than " + std::to_string(maxReadVertices()) + " vertices");
      }
      if (weightColumn < 0 || static_cast<std::size_t>(weightColumn) >= fields_.size()) {
        if (data.edgeWeighted) data.weights.push_back(1.0f);
        continue;
      }
      const std::string_view field = fields_[static_cast<std::size_t>(weightColumn)];
      const auto weight = quillo::parseFloat(field);
      if (!weightsChosen) {
        // The first data line decides whether the third column holds weights.
        weightsChosen = true;
        if (!weight) {
          weightColumn = -1;
          continue;
        }
      }
      if (!weight) {
        return fail(recordLine_, "the weight " + quillo::quoted(field) + " is not a number");
      }
      if (!data.edgeWeighted) {
        data.weights.assign(data.from.size() - 1, 1.0f);
        data.edgeWeighted = true;
      }
      data.weights.push_back(*weight);
    }
    if (failure_.failed()) return nullptr;
    data.verticesCount = names_.size();
    data.properties.emplace_back("Name", std::make_shared<TextList>(std::move(names_)));
    return failure_.make(std::move(data));
  }

 private:
  std::nullptr_t fail(std::uint64_t line, std::string_view message) {
    return failure_.fail(line, message);
  }

  std::uint64_t vertexOf(std::string_view name) {
    const auto [vertex, added] = ids_.insert(name, names_.size());
    if (added) {
      names_.emplace_back(name);
      if (name.data() < text_.data() || name.data() >= text_.data() + text_.size()) {
        // The key points at an unquoted copy that the next record reuses.
        ids_.rekey(name, owned_.emplace_back(name));
      }
    }
    return vertex;
  }

  // A header names "source" and "target" (any case), or holds "weight";
  // without the first two the source and target are the first two columns.
  bool isHeader(int& weightColumn) {
    int source = -1, target = -1, weight = -1;
    for (std::size_t i = 0; i < fields_.size(); ++i) {
      const int column = static_cast<int>(i);
      if (sameLetters(fields_[i], "source")) source = column;
      if (sameLetters(fields_[i], "target")) target = column;
      if (sameLetters(fields_[i], "weight")) weight = column;
    }
    if ((source < 0 || target < 0) && weight < 0) return false;
    if (source >= 0 && target >= 0) {
      sourceColumn_ = source;
      targetColumn_ = target;
    }
    weightColumn = weight;
    return true;
  }

  void chooseSeparator() {
    // The first line that is not a comment decides.
    std::size_t i = pos_;
    while (i < text_.size()) {
      std::size_t end = text_.find('\n', i);
      if (end == std::string_view::npos) end = text_.size();
      std::string_view line = text_.substr(i, end - i);
      const std::size_t first = line.find_first_not_of(" \t\r");
      if (first != std::string_view::npos && line[first] != '#' && line[first] != '%') {
        if (line.find('\t') != std::string_view::npos) {
          separator_ = Separator::Tab;
        } else if (line.find(',') != std::string_view::npos) {
          separator_ = Separator::Comma;
        } else if (line.find(';') != std::string_view::npos) {
          separator_ = Separator::Semicolon;
        }
        return;
      }
      i = end + 1;
    }
  }

  // Reads the next record's fields; false at the end of the text.
  bool nextRecord() {
    if (!separatorChosen_) {
      chooseSeparator();
      separatorChosen_ = true;
    }
    fields_.clear();
    scratch_.clear();
    while (pos_ < text_.size()) {
      recordLine_ = line_;
      // Comment lines and blank lines.
      std::size_t i = pos_;
      while (i < text_.size() && isBlank(text_[i])) ++i;
      if (i < text_.size() && (text_[i] == '#' || text_[i] == '%')) {
        const std::size_t end = text_.find('\n', i);
        pos_ = end == std::string_view::npos ? text_.size() : end + 1;
        ++line_;
        continue;
      }
      readFields();
      if (failure_.failed() || !fields_.empty()) break;
    }
    // A record's fields point into the text or into scratch_, which only
    // grows while the record is read.
    for (std::size_t k = 0; k < quotedFields_.size(); ++k) {
      const auto [index, start, length] = quotedFields_[k];
      fields_[index] = std::string_view(scratch_).substr(start, length);
    }
    quotedFields_.clear();
    return !fields_.empty() || failure_.failed();
  }

  void readFields() {
    const char sep = separator_ == Separator::Comma       ? ','
                     : separator_ == Separator::Tab       ? '\t'
                     : separator_ == Separator::Semicolon ? ';'
                                                          : ' ';
    const bool blanks = separator_ == Separator::Blanks;
    const std::size_t n = text_.size();
    while (true) {
      if (blanks) {
        while (pos_ < n && (isBlank(text_[pos_]) || text_[pos_] == '\r')) ++pos_;
        if (pos_ >= n || text_[pos_] == '\n') break;
      }
      if (pos_ < n && text_[pos_] == '"') {
        readQuoted();
        if (failure_.failed()) return;
      } else {
        const std::size_t start = pos_;
        while (pos_ < n && text_[pos_] != '\n' && text_[pos_] != sep &&
               !(blanks && isBlank(text_[pos_]))) {
          ++pos_;
        }
        std::string_view field = text_.substr(start, pos_ - start);
        if (!field.empty() && field.back() == '\r') field.remove_suffix(1);
        if (!blanks) {
          while (!field.empty() && isBlank(field.front())) field.remove_prefix(1);
          while (!field.empty() && isBlank(field.back())) field.remove_suffix(1);
        }
        fields_.push_back(field);
      }
      if (pos_ < n && text_[pos_] == sep && !blanks) {
        ++pos_;
        continue;
      }
      if (blanks) continue;
      break;
    }
    if (pos_ < n) ++pos_;  // the line feed
    ++line_;
    if (fields_.size() == 1 && fields_[0].empty()) fields_.clear();
  }

  // A quoted field: "" stands for one quote; separators and line breaks inside
  // belong to the field.
  void readQuoted() {
    const std::uint64_t start = line_;
    const std::size_t begin = scratch_.size();
    ++pos_;
    while (true) {
      const std::size_t close = text_.find('"', pos_);
      if (close == std::string_view::npos) {
        fail(start, "a quoted field is not closed");
        return;
      }
      for (std::size_t i = pos_; i < close; ++i) line_ += text_[i] == '\n';
      scratch_.append(text_.substr(pos_, close - pos_));
      pos_ = close + 1;
      if (pos_ < text_.size() && text_[pos_] == '"') {
        scratch_ += '"';
        ++pos_;
        continue;
      }
      break;
    }
    while (pos_ < text_.size() && (isBlank(text_[pos_]) || text_[pos_] == '\r') &&
           separator_ != Separator::Tab && separator_ != Separator::Blanks) {
      ++pos_;
    }
    quotedFields_.push_back({fields_.size(), begin, scratch_.size() - begin});
    fields_.emplace_back();
  }

  struct QuotedField {
    std::size_t index, start, length;
  };

  std::string_view text_;
  detail::ReadFailure failure_;
  std::size_t pos_ = 0;
  std::uint64_t line_ = 1;
  std::uint64_t recordLine_ = 1;
  bool separatorChosen_ = false;
  Separator separator_ = Separator::Blanks;
  int sourceColumn_ = 0;
  int targetColumn_ = 1;
  std::vector<std::string_view> fields_;
  std::vector<QuotedField> quotedFields_;
  std::string scratch_;
  std::deque<std::string> owned_;
  detail::VertexIds ids_{text_.size() / 2 + 16};
  TextList names_;
};

}  // namespace

std::shared_ptr<QLONetwork> readEdgeList(std::string_view text, const std::string& name,
                                         ReadError* error) {
  return EdgeListReader(text, name, error).read();
}

}  // namespace plexora
