// Reads Pajek network files (.net, and the first network of a .paj project).
//
// The reader makes one pass over the text in memory. Each line is either a
// comment ('%'), blank, a section header ('*' and a keyword) or a line of the
// current section; lines before the first header (a title, a description of
// the data) are passed over. Edges are collected in file order; vertex lines feed a
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
#include "quillo/utf8.h"

namespace plexora {
namespace {

using pajek::FieldCursor;

enum class Section {
  Preamble,  // before any header, and after *Network: titles and notes, passed over
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
      : lines_(text),
        name_(name),
        error_(error),
        vertexLimit_(vertexLimitForText(text.size())),
        propertyBudget_(propertyBudgetForText(text.size())) {}

  QLONetwork::Ptr read() {
    std::string_view line;
    while (lines_.next(line)) {
      line = pajek::trimLeft(line);
      if (line.empty() || line.front() == '%') continue;
      if (line.front() == '*') {
        const Step step = startSection(line.substr(1));
        if (step == Step::Fail) return nullptr;
        if (step == Step::Stop) break;
      } else if (section_ == Section::Preamble) {
        if (firstStrayLine_ == 0) firstStrayLine_ = lines_.lineNumber();
      } else if (!readSectionLine(line)) {
        return nullptr;
      }
    }
    if (!finishMatrix()) return nullptr;
    if (!seenHeader_ && firstStrayLine_ != 0) {
      failAt(firstStrayLine_,
             "no section header (*Vertices, *Arcs, *Edges, ...) in the file: this is not Pajek "
             "text");
      return nullptr;
    }
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
    seenHeader_ = true;
    if (next == Section::Skipped && !checkNotCut(word)) return Step::Fail;

    // A project file may hold several networks, each under its own *Network
    // header. Only the first is read: a second *Network, or a second
    // *Vertices outside a partition or vector, ends it.
    if (next == Section::Network) {
      if (seenContent_) return Step::Stop;
      seenContent_ = true;
      setTitle(header.substr(length));
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

  // "*Network NAME": the name, without blanks around it or quotes.
  void setTitle(std::string_view rest) {
    rest = pajek::trimLeft(rest);
    while (!rest.empty() && pajek::isBlank(rest.back())) rest.remove_suffix(1);
    if (rest.size() >= 2 && rest.front() == '"' && rest.back() == '"') {
      rest = rest.substr(1, rest.size() - 2);
    }
    pajek::assignAsUtf8(title_, rest);
  }

  // A header cut short ("*Vert") would otherwise start a skipped section and
  // silently lose what follows.
  bool checkNotCut(std::string_view word) {
    if (word.empty()) return fail("a section header needs a name after '*'");
    for (const SectionKeyword& keyword : kSectionKeywords) {
      if (word.size() < keyword.word.size() &&
          pajek::equalsWord(word, keyword.word.substr(0, word.size()))) {
        return fail("*" + quillo::printable(word) + " is not a section header; is it *" +
                    std::string(1, static_cast<char>(std::toupper(keyword.word[0]))) +
                    std::string(keyword.word.substr(1)) + " cut short?");
      }
    }
    return true;
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
    if (*count > vertexLimit_) return failDeclaresTooMany(*count);
    // Edges may come before *Vertices; they are checked against it now.
    if (largestEnd_ > *count) {
      std::string message = "vertex ";
      quillo::appendNumber(message, largestEnd_);
      message += " is outside 1..";
      quillo::appendNumber(message, *count);
      return failAt(largestEndLine_, message);
    }
    declared_ = true;
    declaredLine_ = lines_.lineNumber();
    vertexCount_ = *count;
    return true;
  }

  // --- lines inside sections ---

  bool readSectionLine(std::string_view line) {
    switch (section_) {
      case Section::Preamble:
      case Section::Network:
        return true;
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
    const std::string refused = vertices_.read(v, fields);
    return refused.empty() || fail(refused);
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
      const quillo::FiniteFloat given = quillo::parseFiniteFloat(field);
      if (given.problem == quillo::FloatProblem::None) {
        weight = given.value;
        weighted_ = true;
      } else if (given.problem != quillo::FloatProblem::NotANumber) {
        return fail("weight " + quillo::floatProblemText(field, given.problem));
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
      const quillo::FiniteFloat entry = quillo::parseFiniteFloat(field);
      if (entry.problem != quillo::FloatProblem::None) {
        return fail(quillo::floatProblemText(field, entry.problem));
      }
      if (entry.value != 0.0f) {
        addEdge(matrixRow_, matrixColumn_, entry.value, EdgeKind::Arc);
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
      if (*number > vertexLimit_) return failOutside(field);
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
    // The vertex lines are laid out for every vertex only if that fits.
    const std::uint64_t perVertex = vertices_.bytesPerVertex();
    if (perVertex > 0 && data.verticesCount > propertyBudget_ / perVertex) {
      std::string message = "the labels and attributes of ";
      quillo::appendNumber(message, data.verticesCount);
      message += " vertices need ";
      quillo::appendNumber(message, (data.verticesCount * perVertex) >> 20);
      message += " MiB, more than the ";
      quillo::appendNumber(message, propertyBudget_ >> 20);
      message += " MiB a file of this size may take; list fewer vertices in *Vertices";
      failAt(declaredLine_, message);
      return nullptr;
    }
    data.from = std::move(from_);
    data.to = std::move(to_);
    if (weighted_) data.weights = std::move(weights_);
    data.directed = directed_;
    data.edgeWeighted = weighted_;
    data.vertexWeighted = false;
    data.title = std::move(title_);
    vertices_.moveInto(data.verticesCount, data.properties);
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
      quillo::appendNumber(message, vertexLimit_);
      message += " (vertex numbers start at 1 and may not pass the vertex limit";
      if (vertexLimit_ < maxReadVertices()) message += " of a file of this size";
      message += ")";
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

  bool failDeclaresTooMany(std::uint64_t count) {
    std::string message = "*Vertices declares ";
    quillo::appendNumber(message, count);
    message += " vertices, but a file of this size may declare at most ";
    quillo::appendNumber(message, vertexLimit_);
    message += " (10000000 plus 16 per byte of the file)";
    return fail(message);
  }

  pajek::LineCursor lines_;
  const std::string& name_;
  ReadError* error_;
  const std::uint64_t vertexLimit_;     // the most vertices this text may have
  const std::uint64_t propertyBudget_;  // bytes its per-vertex properties may take

  Section section_ = Section::Preamble;
  bool seenHeader_ = false;
  bool seenContent_ = false;          // a header other than a first *Network was seen
  std::string title_;                 // from *Network
  std::uint64_t firstStrayLine_ = 0;  // the first line outside any section

  bool declared_ = false;  // *Vertices n was read
  std::uint64_t declaredLine_ = 0;
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

}  // namespace

std::shared_ptr<QLONetwork> readPajek(std::string_view text, const std::string& name,
                                      ReadError* error) {
  std::string converted;
  std::string_view utf8;
  std::string why;
  if (!quillo::textAsUtf8(text, converted, utf8, why)) {
    if (error) *error = ReadError{name, 0, why};
    return nullptr;
  }
  try {
    return PajekParser(utf8, name, error).read();
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
