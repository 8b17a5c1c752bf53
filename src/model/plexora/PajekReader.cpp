// Reads Pajek network files (.net, and the first network of a .paj project).
//
// The reader makes one pass over the text in memory. Each line is either a
// comment ('%'), blank, a section header ('*' and a keyword) or a line of the
// current section. Edges are collected in file order; vertex lines feed a
// VertexTable. Nothing is handed out unless the whole text reads cleanly.
#include <array>
#include <cctype>
#include <cstdint>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "plexora/QLONetwork.h"
#include "plexora/formats.h"
#include "plexora/pajek_lines.h"
#include "plexora/pajek_vertices.h"
#include "quillo/fileio.h"
#include "quillo/numbertext.h"

namespace plexora {
namespace {

using pajek::FieldCursor;

enum class Section {
  Preamble,  // before any header, and after *Network: only comments belong here
  Network,
  Vertices,
  Arcs,
  Edges,
  Arcslist,
  Edgeslist,
  Matrix,
  ProjectData,  // a partition, vector, ... of a project file
  Skipped       // a section this reader does not use
};

struct SectionKeyword {
  std::string_view word;
  Section section;
};

constexpr std::array<SectionKeyword, 12> kSectionKeywords{{
    {"network", Section::Network},
    {"vertices", Section::Vertices},
    {"arcs", Section::Arcs},
    {"edges", Section::Edges},
    {"arcslist", Section::Arcslist},
    {"edgeslist", Section::Edgeslist},
    {"matrix", Section::Matrix},
    {"partition", Section::ProjectData},
    {"vector", Section::ProjectData},
    {"permutation", Section::ProjectData},
    {"cluster", Section::ProjectData},
    {"hierarchy", Section::ProjectData},
}};

// What reading goes on with after a section header.
enum class Step { Go, Stop, Fail };

// Arc sections make the network directed; edge sections leave it as it is.
enum class EdgeKind { Arc, Edge };

class PajekParser {
 public:
  PajekParser(std::string_view text, const std::string& name, ReadError* error)
      : lines_(text), name_(name), error_(error) {}

  QLONetwork::Ptr read() {
    std::string_view line;
    while (lines_.next(line)) {
      line = pajek::trimLeft(line);
      if (line.empty() || line.front() == '%') continue;
      if (line.front() == '*') {
        const Step step = startSection(line.substr(1));
        if (step == Step::Fail) return nullptr;
        if (step == Step::Stop) break;
      } else if (!readSectionLine(line)) {
        return nullptr;
      }
    }
    if (!finishMatrix()) return nullptr;
    return build();
  }

 private:
  // --- section headers ---

  Step startSection(std::string_view header) {
    std::size_t length = 0;
    while (length < header.size() && std::isalpha(static_cast<unsigned char>(header[length]))) {
      ++length;
    }
    const std::string_view word = header.substr(0, length);
    Section next = Section::Skipped;
    for (const SectionKeyword& keyword : kSectionKeywords) {
      if (pajek::equalsWord(word, keyword.word)) next = keyword.section;
    }
    if (!finishMatrix()) return Step::Fail;

    // A project file may hold several networks, each under its own *Network
    // header. Only the first is read: a second *Network, or a second
    // *Vertices outside a partition or vector, ends it.
    if (next == Section::Network) {
      if (seenContent_) return Step::Stop;
      seenContent_ = true;
      section_ = Section::Preamble;
      return Step::Go;
    }
    if (next == Section::Vertices) {
      // In a project file each partition or vector gives its length with a
      // *Vertices line of its own; that one does not describe the network.
      if (section_ == Section::ProjectData) {
        section_ = Section::Skipped;
        return Step::Go;
      }
      if (declared_) return Step::Stop;
      if (!declareVertices(header.substr(length))) return Step::Fail;
    }
    if (next == Section::Matrix) {
      if (!declared_) {
        fail("*Matrix needs a *Vertices line with the vertex count before it");
        return Step::Fail;
      }
      matrixLine_ = lines_.lineNumber();
      matrixRow_ = 0;
      matrixColumn_ = 0;
    }
    seenContent_ = true;
    section_ = next;
    return Step::Go;
  }

  bool declareVertices(std::string_view rest) {
    FieldCursor fields(rest);
    std::string_view field;
    if (!fields.next(field)) return fail("*Vertices needs the number of vertices");
    const auto count = quillo::parseUInt64(field);
    if (!count) {
      if (pajek::isDigitRun(field)) return failTooMany(field);
      return fail(quillo::quoted(field) + " is not a vertex count");
    }
    if (*count > maxReadVertices()) return failTooMany(field);
    // Edges may come before *Vertices; they are checked against it now.
    if (largestEnd_ > *count) {
      std::string message = "vertex ";
      quillo::appendNumber(message, largestEnd_);
      message += " is outside 1..";
      quillo::appendNumber(message, *count);
      return failAt(largestEndLine_, message);
    }
    declared_ = true;
    vertexCount_ = *count;
    return true;
  }

  // --- lines inside sections ---

  bool readSectionLine(std::string_view line) {
    switch (section_) {
      case Section::Preamble:
      case Section::Network:
        return fail(quillo::quoted(line) +
                    " is not in a section: expected a header such as *Vertices, *Arcs or *Edges");
      case Section::Vertices:
        return readVertexLine(line);
      case Section::Arcs:
        return readEdgeLine(line, EdgeKind::Arc);
      case Section::Edges:
        return readEdgeLine(line, EdgeKind::Edge);
      case Section::Arcslist:
        return readListLine(line, EdgeKind::Arc);
      case Section::Edgeslist:
        return readListLine(line, EdgeKind::Edge);
      case Section::Matrix:
        return readMatrixLine(line);
      case Section::ProjectData:
      case Section::Skipped:
        return true;
    }
    return true;
  }

  bool readVertexLine(std::string_view line) {
    FieldCursor fields(line);
    std::string_view field;
    fields.next(field);
    std::uint64_t v = 0;
    if (!vertexNumber(field, v)) return false;
    if (!vertices_.started()) vertices_.start(vertexCount_);
    vertices_.read(v, fields);
    return true;
  }

  // `a b [weight] [attributes...]`; a missing or non-numeric weight is 1.
  bool readEdgeLine(std::string_view line, EdgeKind kind) {
    FieldCursor fields(line);
    std::string_view field;
    std::uint64_t a = 0;
    std::uint64_t b = 0;
    fields.next(field);
    if (!vertexNumber(field, a)) return false;
    if (!fields.next(field)) return fail("an edge line needs two vertex numbers");
    if (!vertexNumber(field, b)) return false;
    float weight = 1.0f;
    if (fields.next(field)) {
      if (const auto given = pajek::parseReal(field)) {
        weight = *given;
        weighted_ = true;
      }
    }
    addEdge(a, b, weight, kind);
    return true;
  }

  // `a b c ...`: edges a-b, a-c, ... without weights.
  bool readListLine(std::string_view line, EdgeKind kind) {
    FieldCursor fields(line);
    std::string_view field;
    std::uint64_t a = 0;
    fields.next(field);
    if (!vertexNumber(field, a)) return false;
    while (fields.next(field)) {
      std::uint64_t b = 0;
      if (!vertexNumber(field, b)) return false;
      addEdge(a, b, 1.0f, kind);
    }
    return true;
  }

  // Entry (i, j) of the n-by-n matrix, when not zero, is an arc i->j with that
  // weight. Rows may wrap over several lines: entries are simply counted.
  bool readMatrixLine(std::string_view line) {
    FieldCursor fields(line);
    std::string_view field;
    while (fields.next(field)) {
      if (matrixRow_ == vertexCount_) {
        std::string message = "the matrix has more than ";
        quillo::appendNumber(message, vertexCount_);
        message += " rows of ";
        quillo::appendNumber(message, vertexCount_);
        message += " numbers";
        return fail(message);
      }
      const auto entry = pajek::parseReal(field);
      if (!entry) return fail(quillo::quoted(field) + " is not a number");
      if (*entry != 0.0f) {
        addEdge(matrixRow_, matrixColumn_, *entry, EdgeKind::Arc);
        weighted_ = true;
      }
      if (++matrixColumn_ == vertexCount_) {
        matrixColumn_ = 0;
        ++matrixRow_;
      }
    }
    return true;
  }

  bool finishMatrix() {
    if (section_ != Section::Matrix || matrixRow_ == vertexCount_) return true;
    std::string message = "the matrix ends after ";
    quillo::appendNumber(message, matrixRow_ * vertexCount_ + matrixColumn_);
    message += " numbers; it needs ";
    quillo::appendNumber(message, vertexCount_);
    message += " rows of ";
    quillo::appendNumber(message, vertexCount_);
    return failAt(matrixLine_, message);
  }

  // --- vertices and edges ---

  // Turns a 1-based vertex number from the file into a 0-based index.
  bool vertexNumber(std::string_view field, std::uint64_t& index) {
    const auto number = quillo::parseUInt64(field);
    if (!number) {
      if (pajek::isDigitRun(field)) return failOutside(field);
      return fail(quillo::quoted(field) + " is not a vertex number");
    }
    if (*number == 0) return failOutside(field);
    if (declared_) {
      if (*number > vertexCount_) return failOutside(field);
    } else {
      if (*number > maxReadVertices()) return failOutside(field);
      if (*number > largestEnd_) {
        largestEnd_ = *number;
        largestEndLine_ = lines_.lineNumber();
      }
    }
    index = *number - 1;
    return true;
  }

  void addEdge(std::uint64_t a, std::uint64_t b, float weight, EdgeKind kind) {
    from_.push_back(a);
    to_.push_back(b);
    weights_.push_back(weight);
    if (kind == EdgeKind::Arc) directed_ = true;
  }

  QLONetwork::Ptr build() {
    NetworkData data;
    data.verticesCount = declared_ ? vertexCount_ : largestEnd_;
    data.from = std::move(from_);
    data.to = std::move(to_);
    if (weighted_) data.weights = std::move(weights_);
    data.directed = directed_;
    data.edgeWeighted = weighted_;
    data.vertexWeighted = false;
    vertices_.moveInto(data.properties);
    std::string why;
    auto network = QLONetwork::make(std::move(data), &why);
    if (!network) failAt(0, why);
    return network;
  }

  // --- errors ---

  bool fail(const std::string& message) { return failAt(lines_.lineNumber(), message); }

  bool failAt(std::uint64_t line, const std::string& message) {
    if (error_) *error_ = ReadError{name_, line, message};
    return false;
  }

  bool failOutside(std::string_view number) {
    std::string message = "vertex ";
    message.append(number.substr(0, 40));
    if (declared_) {
      message += " is outside 1..";
      quillo::appendNumber(message, vertexCount_);
    } else {
      message += " is outside 1..";
      quillo::appendNumber(message, maxReadVertices());
      message += " (vertex numbers start at 1 and may not pass the vertex limit)";
    }
    return fail(message);
  }

  bool failTooMany(std::string_view count) {
    std::string message = "vertex count ";
    message.append(count.substr(0, 40));
    message += " is above the limit of ";
    quillo::appendNumber(message, maxReadVertices());
    return fail(message);
  }

  pajek::LineCursor lines_;
  const std::string& name_;
  ReadError* error_;

  Section section_ = Section::Preamble;
  bool seenContent_ = false;  // a header other than a first *Network was seen

  bool declared_ = false;  // *Vertices n was read
  std::uint64_t vertexCount_ = 0;
  std::uint64_t largestEnd_ = 0;  // the largest vertex number before *Vertices
  std::uint64_t largestEndLine_ = 0;

  std::uint64_t matrixLine_ = 0;
  std::uint64_t matrixRow_ = 0;
  std::uint64_t matrixColumn_ = 0;

  std::vector<std::uint64_t> from_;
  std::vector<std::uint64_t> to_;
  std::vector<float> weights_;
  bool directed_ = false;
  bool weighted_ = false;
  pajek::VertexTable vertices_;
};

std::string_view withoutByteOrderMark(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  return text;
}

}  // namespace

std::shared_ptr<QLONetwork> readPajek(std::string_view text, const std::string& name,
                                      ReadError* error) {
  try {
    return PajekParser(withoutByteOrderMark(text), name, error).read();
  } catch (const std::bad_alloc&) {
    if (error) *error = ReadError{name, 0, "not enough memory to read the network"};
    return nullptr;
  }
}

}  // namespace plexora

QLONetwork::Ptr QLONetwork::initWithContentsOfPajekURL(const std::filesystem::path& file,
                                                       ReadError* error) {
  std::string text;
  if (!quillo::readWholeFile(file, text, error)) return nullptr;
  return plexora::readPajek(text, file.string(), error);
}
