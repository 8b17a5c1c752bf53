// Reads a GML file (the form networkx's and igraph's write_gml produce) into a
// network. The text is scanned once in place: keys, numbers, quoted strings
// and brackets; only string values that become labels or text properties are
// copied.
#include <charconv>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "plexora/QLONetwork.h"
#include "plexora/formats.h"
#include "plexora/read_columns.h"
#include "quillo/numbertext.h"

namespace plexora {
namespace {

// A value: a number, a string (still with its entities) or the start of a
// list ('[' consumed).
struct Value {
  enum Kind { Number, String, List } kind = Number;
  double number = 0;
  std::string_view text;
};

// Appends a string value with the entity references networkx writes (&#NN;,
// &#xNN;, &amp; &quot; &lt; &gt; &apos;) replaced by their characters.
void appendUnescaped(std::string& out, std::string_view text) {
  std::size_t i = 0;
  while (i < text.size()) {
    const std::size_t amp = text.find('&', i);
    if (amp == std::string_view::npos) break;
    out.append(text.substr(i, amp - i));
    const std::size_t semi = text.find(';', amp);
    std::string_view entity =
        semi == std::string_view::npos ? std::string_view{} : text.substr(amp + 1, semi - amp - 1);
    std::uint32_t code = 0;
    bool known = true;
    if (entity.size() > 1 && entity[0] == '#') {
      const bool hex = entity[1] == 'x' || entity[1] == 'X';
      const auto digits = entity.substr(hex ? 2 : 1);
      const auto [end, ec] =
          std::from_chars(digits.data(), digits.data() + digits.size(), code, hex ? 16 : 10);
      known = ec == std::errc{} && end == digits.data() + digits.size() && code > 0 &&
              code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
    } else if (entity == "amp") {
      code = '&';
    } else if (entity == "quot") {
      code = '"';
    } else if (entity == "lt") {
      code = '<';
    } else if (entity == "gt") {
      code = '>';
    } else if (entity == "apos") {
      code = '\'';
    } else {
      known = false;
    }
    if (!known) {
      out += '&';
      i = amp + 1;
      continue;
    }
    if (code < 0x80) {
      out += static_cast<char>(code);
    } else if (code < 0x800) {
      out += static_cast<char>(0xC0 | (code >> 6));
      out += static_cast<char>(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
      out += static_cast<char>(0xE0 | (code >> 12));
      out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
      out += static_cast<char>(0xF0 | (code >> 18));
      out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
      out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (code & 0x3F));
    }
    i = semi + 1;
  }
  out.append(text.substr(i));
}

std::string unescaped(std::string_view text) {
  std::string out;
  if (text.find('&') == std::string_view::npos) return std::string(text);
  appendUnescaped(out, text);
  return out;
}

struct PendingEdge {
  std::int64_t source = 0;
  std::int64_t target = 0;
  float weight = 1.0f;
  std::uint64_t line = 0;
};

class GmlReader {
 public:
  GmlReader(std::string_view text, const std::string& name, ReadError* error)
      : text_(text), failure_(name, error) {
    if (text_.substr(0, 3) == "\xEF\xBB\xBF") pos_ = 3;
  }

  QLONetwork::Ptr read() {
    if (!readTop()) return nullptr;
    if (!sawGraph_) return fail(0, "the file has no \"graph [\" list");
    NetworkData data;
    data.verticesCount = ids_.size();
    data.directed = directed_;
    data.edgeWeighted = weighted_;
    if (!resolveEdges(data)) return nullptr;
    columns_.finish(data);
    return failure_.make(std::move(data));
  }

 private:
  std::nullptr_t fail(std::uint64_t line, std::string_view message) {
    return failure_.fail(line, message);
  }

  // Skips white space and '#' comment lines, counting lines.
  void skipBlank() {
    while (pos_ < text_.size()) {
      const char c = text_[pos_];
      if (c == '\n') {
        ++line_;
      } else if (c == '#') {
        while (pos_ < text_.size() && text_[pos_] != '\n') ++pos_;
        continue;
      } else if (c != ' ' && c != '\t' && c != '\r' && c != '\f' && c != '\v') {
        return;
      }
      ++pos_;
    }
  }

  std::string_view bareToken() {
    const std::size_t start = pos_;
    while (pos_ < text_.size()) {
      const char c = text_[pos_];
      if (c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '[' || c == ']' || c == '"')
        break;
      ++pos_;
    }
    return text_.substr(start, pos_ - start);
  }

  // The next key, or nothing at ']' (consumed) or at the end of the text.
  std::optional<std::string_view> nextKey(bool* closed) {
    skipBlank();
    *closed = false;
    if (pos_ >= text_.size()) return std::nullopt;
    if (text_[pos_] == ']') {
      ++pos_;
      *closed = true;
      return std::nullopt;
    }
    const std::string_view key = bareToken();
    if (key.empty()) {
      fail(line_, "expected a key, found " + quillo::quoted(text_.substr(pos_, 1)));
      return std::nullopt;
    }
    return key;
  }

  std::optional<Value> nextValue(std::string_view key) {
    skipBlank();
    if (pos_ >= text_.size()) {
      fail(line_, "the key " + quillo::quoted(key) + " has no value");
      return std::nullopt;
    }
    Value value;
    const char c = text_[pos_];
    if (c == '[') {
      ++pos_;
      value.kind = Value::List;
      return value;
    }
    if (c == '"') {
      const std::size_t end = text_.find('"', pos_ + 1);
      if (end == std::string_view::npos) {
        fail(line_, "a string is not closed");
        return std::nullopt;
      }
      value.kind = Value::String;
      value.text = text_.substr(pos_ + 1, end - pos_ - 1);
      for (char ch : value.text) line_ += ch == '\n';
      pos_ = end + 1;
      return value;
    }
    const std::string_view token = bareToken();
    const auto number = quillo::parseDouble(token);
    if (!number) {
      fail(line_, "the value " + quillo::quoted(token.empty() ? text_.substr(pos_, 1) : token) +
                      " of " + quillo::quoted(key) + " is neither a number nor a string");
      return std::nullopt;
    }
    value.number = *number;
    return value;
  }

  // Skips the rest of a list whose '[' was consumed.
  bool skipList() {
    const std::uint64_t start = line_;
    for (int depth = 1; depth > 0;) {
      skipBlank();
      if (pos_ >= text_.size()) return fail(start, "a list is not closed with ']'"), false;
      const char c = text_[pos_];
      if (c == '[') {
        ++depth;
        ++pos_;
      } else if (c == ']') {
        --depth;
        ++pos_;
      } else if (c == '"') {
        if (!nextValue("string")) return false;
      } else {
        bareToken();
      }
    }
    return true;
  }

  bool readTop() {
    bool closed = false;
    while (auto key = nextKey(&closed)) {
      auto value = nextValue(*key);
      if (!value) return false;
      if (value->kind != Value::List) continue;
      if (*key == "graph" && !sawGraph_) {
        sawGraph_ = true;
        if (!readGraph()) return false;
      } else if (!skipList()) {
        return false;
      }
    }
    if (closed) return fail(line_, "']' without a list to close"), false;
    return !failure_.failed();
  }

  // Reads a list's entries up to its ']' (the list began on line `start`),
  // handing each key and value to `onEntry`, which answers false to stop.
  // `what` names the list in the message when it is never closed.
  template <class OnEntry>
  bool readEntries(std::uint64_t start, std::string_view what, OnEntry onEntry) {
    bool closed = false;
    while (auto key = nextKey(&closed)) {
      auto value = nextValue(*key);
      if (!value || !onEntry(*key, *value)) return false;
    }
    if (failure_.failed()) return false;
    if (!closed) return fail(start, std::string(what) + " is not closed with ']'"), false;
    return true;
  }

  bool readGraph() {
    return readEntries(line_, "the graph list", [this](std::string_view key, const Value& value) {
      if (value.kind == Value::List) {
        if (key == "node") return readNode();
        if (key == "edge") return readEdge();
        return skipList();
      }
      if (key == "directed" && value.kind == Value::Number) directed_ = value.number != 0;
      return true;
    });
  }

  bool readGraphics(std::array<float, 3>& position, bool& placed) {
    return readEntries(line_, "the graphics list", [&](std::string_view key, const Value& value) {
      if (value.kind == Value::List) return skipList();
      const int axis = key == "x" ? 0 : key == "y" ? 1 : key == "z" ? 2 : -1;
      if (axis < 0) return true;
      if (value.kind != Value::Number || !std::isfinite(value.number) ||
          !std::isfinite(static_cast<float>(value.number))) {
        return fail(line_, "the coordinate " + quillo::quoted(key) + " is not a finite number"),
               false;
      }
      position[static_cast<std::size_t>(axis)] = static_cast<float>(value.number);
      placed = true;
      return true;
    });
  }

  bool readNode() {
    const std::uint64_t start = line_;
    std::optional<std::int64_t> id;
    std::optional<std::string_view> label;
    std::array<float, 3> position{0.0f, 0.0f, 0.0f};
    bool placed = false;
    attributes_.clear();
    const bool read =
        readEntries(start, "a node list", [&](std::string_view key, const Value& value) {
          if (value.kind == Value::List) {
            return key == "graphics" ? readGraphics(position, placed) : skipList();
          }
          if (key == "id") {
            if (value.kind != Value::Number || value.number != std::floor(value.number) ||
                std::fabs(value.number) > 9.0e15) {
              return fail(line_, "a node id must be an integer"), false;
            }
            id = static_cast<std::int64_t>(value.number);
          } else if (key == "label") {
            label = value.text;
            if (value.kind == Value::Number) label = lastNumberToken();
          } else {
            attributes_.emplace_back(key, value);
          }
          return true;
        });
    if (!read) return false;
    if (!id) return fail(start, "a node has no id"), false;
    const std::uint64_t vertex = ids_.size();
    if (vertex >= maxReadVertices()) {
      return fail(start, "more than " + std::to_string(maxReadVertices()) + " vertices"), false;
    }
    if (!ids_.emplace(*id, vertex).second) {
      return fail(start, "the node id " + std::to_string(*id) + " appears twice"), false;
    }
    if (label) {
      if (columns_.names.size() < vertex) {
        // Earlier nodes had no label: they are named by their ids.
        for (std::uint64_t v = columns_.names.size(); v < vertex; ++v) {
          columns_.names.push_back(std::to_string(order_[v]));
        }
      }
      columns_.names.push_back(unescaped(*label));
    } else if (!columns_.names.empty()) {
      columns_.names.push_back(std::to_string(*id));
    }
    order_.push_back(*id);
    if (placed) columns_.position.set(vertex, position);
    for (const auto& [key, value] : attributes_) {
      auto& column = columns_.column(key);
      if (value.kind == Value::Number) {
        column.setNumber(vertex, value.number);
      } else {
        column.setText(vertex, unescaped(value.text));
      }
    }
    return true;
  }

  // The text of the number just read (a numeric label stays as written).
  std::string_view lastNumberToken() const {
    std::size_t start = pos_;
    while (start > 0 && text_[start - 1] != ' ' && text_[start - 1] != '\t' &&
           text_[start - 1] != '\n' && text_[start - 1] != '\r') {
      --start;
    }
    return text_.substr(start, pos_ - start);
  }

  bool readEdge() {
    PendingEdge edge;
    edge.line = line_;
    bool hasSource = false, hasTarget = false;
    std::optional<double> weight, value;
    const bool read =
        readEntries(edge.line, "an edge list", [&](std::string_view key, const Value& v) {
          if (v.kind == Value::List) return skipList();
          const bool isNumber = v.kind == Value::Number;
          if (key == "source" || key == "target") {
            if (!isNumber || v.number != std::floor(v.number) || std::fabs(v.number) > 9.0e15) {
              return fail(line_, "the edge's " + std::string(key) + " is not a node id"), false;
            }
            (key == "source" ? edge.source : edge.target) = static_cast<std::int64_t>(v.number);
            (key == "source" ? hasSource : hasTarget) = true;
          } else if (key == "weight" && isNumber) {
            weight = v.number;
          } else if (key == "value" && isNumber) {
            value = v.number;
          }
          return true;
        });
    if (!read) return false;
    if (!hasSource || !hasTarget)
      return fail(edge.line, "an edge lacks its source or target"), false;
    if (weight || value) {
      edge.weight = static_cast<float>(weight ? *weight : *value);
      weighted_ = true;
    }
    edges_.push_back(edge);
    return true;
  }

  bool resolveEdges(NetworkData& data) {
    const std::size_t E = edges_.size();
    data.from.resize(E);
    data.to.resize(E);
    if (weighted_) data.weights.resize(E);
    for (std::size_t k = 0; k < E; ++k) {
      const PendingEdge& edge = edges_[k];
      const auto from = ids_.find(edge.source);
      const auto to = ids_.find(edge.target);
      if (from == ids_.end() || to == ids_.end()) {
        const std::int64_t missing = from == ids_.end() ? edge.source : edge.target;
        return fail(edge.line, "the edge names node " + std::to_string(missing) +
                                   ", which the file does not define"),
               false;
      }
      data.from[k] = from->second;
      data.to[k] = to->second;
      if (weighted_) data.weights[k] = edge.weight;
    }
    return true;
  }

  std::string_view text_;
  detail::ReadFailure failure_;
  std::size_t pos_ = 0;
  std::uint64_t line_ = 1;
  bool sawGraph_ = false;
  bool directed_ = false;
  bool weighted_ = false;
  std::unordered_map<std::int64_t, std::uint64_t> ids_;
  std::vector<std::int64_t> order_;
  std::vector<PendingEdge> edges_;
  std::vector<std::pair<std::string_view, Value>> attributes_;
  detail::VertexColumns columns_;
};

}  // namespace

std::shared_ptr<QLONetwork> readGml(std::string_view text, const std::string& name,
                                    ReadError* error) {
  return GmlReader(text, name, error).read();
}

}  // namespace plexora
