#pragma once
// Vertex properties gathered while a GML, GEXF or edge-list file is read:
// named columns that hold numbers until a text value arrives (then every entry
// becomes text), and 3-vectors for "Position" and "Color". Vertices without a
// value get NaN, "" or the zero vector.
#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "plexora/QLONetwork.h"
#include "plexora/graphml_escape.h"
#include "quillo/numbertext.h"

namespace plexora::detail {

class ValueColumn {
 public:
  explicit ValueColumn(std::string name) : name_(std::move(name)) {}
  const std::string& name() const { return name_; }

  void setNumber(std::uint64_t vertex, double value) {
    if (text_) return setText(vertex, value != value ? std::string() : quillo::numberText(value));
    if (numbers_.size() <= vertex) numbers_.resize(vertex + 1, std::nan(""));
    numbers_[vertex] = value;
  }
  void setText(std::uint64_t vertex, std::string value) {
    if (!text_) becomeText();
    if (texts_.size() <= vertex) texts_.resize(vertex + 1);
    texts_[vertex] = std::move(value);
  }

  PropertyValue finish(std::uint64_t vertices) {
    if (text_) {
      texts_.resize(vertices);
      return std::make_shared<TextList>(std::move(texts_));
    }
    numbers_.resize(vertices, std::nan(""));
    return QLONumberArray::initWithDoubles(numbers_);
  }

 private:
  void becomeText() {
    text_ = true;
    texts_.resize(numbers_.size());
    for (std::size_t v = 0; v < numbers_.size(); ++v) {
      if (numbers_[v] == numbers_[v]) texts_[v] = quillo::numberText(numbers_[v]);
    }
    numbers_.clear();
  }

  std::string name_;
  bool text_ = false;
  std::vector<double> numbers_;
  TextList texts_;
};

class VectorColumn {
 public:
  void set(std::uint64_t vertex, const std::array<float, 3>& value) {
    if (values_.size() <= vertex) values_.resize(vertex + 1, {0.0f, 0.0f, 0.0f});
    values_[vertex] = value;
    used_ = true;
  }
  bool used() const { return used_; }
  std::shared_ptr<QLOVector3dArray> finish(std::uint64_t vertices) const {
    auto out = QLOVector3dArray::initWithSize(vertices, Precision::Float);
    float* planes[3] = {out->pointerForX(), out->pointerForY(), out->pointerForZ()};
    for (std::size_t v = 0; v < values_.size() && v < vertices; ++v) {
      for (int axis = 0; axis < 3; ++axis)
        planes[axis][v] = values_[v][static_cast<std::size_t>(axis)];
    }
    return out;
  }

 private:
  std::vector<std::array<float, 3>> values_;
  bool used_ = false;
};

// "Name", "Position", "Color" and then the named columns in order of first
// use. A column whose name is taken already gets " 2", " 3", ... appended.
class VertexColumns {
 public:
  ValueColumn& column(std::string_view name) {
    for (auto& c : columns_) {
      if (c.name() == name) return c;
    }
    return columns_.emplace_back(std::string(name));
  }
  VectorColumn position;
  VectorColumn color;
  std::vector<std::string> names;  // empty: no "Name"

  void finish(NetworkData& data) {
    const std::uint64_t V = data.verticesCount;
    auto add = [&](std::string name, PropertyValue value) {
      const std::string base = name;
      for (int n = 2; taken(data, name); ++n) name = base + " " + std::to_string(n);
      data.properties.emplace_back(std::move(name), std::move(value));
    };
    if (!names.empty()) {
      names.resize(V);
      add("Name", std::make_shared<TextList>(std::move(names)));
    }
    if (position.used()) add("Position", position.finish(V));
    if (color.used()) add("Color", color.finish(V));
    for (auto& c : columns_) add(c.name(), c.finish(V));
  }

 private:
  static bool taken(const NetworkData& data, const std::string& name) {
    for (const auto& entry : data.properties) {
      if (entry.first == name) return true;
    }
    return false;
  }
  std::vector<ValueColumn> columns_;
};

// `text` with every byte that does not begin a well-formed UTF-8 sequence
// replaced by U+FFFD: error messages quote pieces of files, which may be cut
// mid-character or not be UTF-8 at all, and must stay valid text.
inline std::string validUtf8(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    if (c < 0x80) {
      out += static_cast<char>(c);
      ++i;
      continue;
    }
    const std::size_t length = graphml::detail::utf8SequenceLength(text, i);
    if (length == 0) {
      out += graphml::detail::kReplacement;
      ++i;
    } else {
      out.append(text.substr(i, length));
      i += length;
    }
  }
  return out;
}

inline bool finite3(const std::array<float, 3>& v) {
  return std::isfinite(v[0]) && std::isfinite(v[1]) && std::isfinite(v[2]);
}

// The first reason a reader stopped, with the file and line, handed to the
// caller's ReadError; and the network made from what was read, or why not.
class ReadFailure {
 public:
  ReadFailure(const std::string& file, ReadError* error) : file_(file), error_(error) {}
  std::nullptr_t fail(std::uint64_t line, std::string_view message) {
    if (error_) *error_ = ReadError{file_, line, validUtf8(message)};
    failed_ = true;
    return nullptr;
  }
  bool failed() const { return failed_; }
  QLONetwork::Ptr make(NetworkData data) {
    std::string why;
    auto network = QLONetwork::make(std::move(data), &why);
    if (!network) return fail(0, why);
    return network;
  }

 private:
  const std::string& file_;
  ReadError* error_;
  bool failed_ = false;
};

}  // namespace plexora::detail
