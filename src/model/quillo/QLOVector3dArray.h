#pragma once
// `count` three-component vectors kept as three planes X, Y and Z, each one
// contiguous run with stride 1 and 64-byte aligned, so kernels can walk a plane
// with vector arithmetic. Precision 1 holds 32-bit floats (what the application
// works with); precision 2 holds doubles, as a file or a script may bring.
#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "quillo/ReadError.h"

class QLONumberArray;

enum class Precision : std::uint32_t { Float = 1, Double = 2 };

class QLOVector3dArray {
 public:
  using Ptr = std::shared_ptr<QLOVector3dArray>;

  // Every component zero.
  static Ptr initWithSize(std::uint64_t count, Precision precision);
  // Copies three arrays of equal count into the planes; null when the counts
  // differ.
  static Ptr initWithX(const QLONumberArray& x, const QLONumberArray& y, const QLONumberArray& z,
                       Precision precision);
  // An independent copy converted to `precision`.
  static Ptr initWithVector3dArray(const QLOVector3dArray& other, Precision precision);
  // Reads three numbers per line (X Y Z); blank lines are ignored. Null on
  // failure, with the line and reason in `error` when given.
  static Ptr initWithContentsOfURL(const std::filesystem::path& file, Precision precision,
                                   ReadError* error = nullptr);
  static Ptr initWithText(std::string_view text, Precision precision, const std::string& name,
                          ReadError* error = nullptr);

  ~QLOVector3dArray();
  QLOVector3dArray(const QLOVector3dArray&) = delete;
  QLOVector3dArray& operator=(const QLOVector3dArray&) = delete;

  std::uint64_t count() const { return count_; }
  Precision precision() const { return precision_; }

  // Plane pointers at precision 1 (null at another precision).
  float* pointerForX() { return floatPlane(0); }
  float* pointerForY() { return floatPlane(1); }
  float* pointerForZ() { return floatPlane(2); }
  const float* pointerForX() const { return floatPlane(0); }
  const float* pointerForY() const { return floatPlane(1); }
  const float* pointerForZ() const { return floatPlane(2); }
  // Plane pointers at precision 2 (null at another precision).
  double* doublePointerForX() { return doublePlane(0); }
  double* doublePointerForY() { return doublePlane(1); }
  double* doublePointerForZ() { return doublePlane(2); }

  // Fresh float copies of one plane.
  std::vector<float> xfv() const { return planeAsFloats(0); }
  std::vector<float> yfv() const { return planeAsFloats(1); }
  std::vector<float> zfv() const { return planeAsFloats(2); }

  // Every element copy below reads and writes the planes as relaxed atomics,
  // so a layout thread may update an array that other threads read (a reader
  // may see a vector half updated, never a torn number).
  void copyPlanesTo(float* x, float* y, float* z) const;
  void copyPlanesFrom(const float* x, const float* y, const float* z);

  std::array<double, 3> vectorAtIndex(std::uint64_t index) const;
  void setVector(const std::array<double, 3>& value, std::uint64_t index);

  // One "X Y Z" line per vector in shortest round-trip form.
  std::string text() const;
  bool writeToURL(const std::filesystem::path& file, WriteMode mode,
                  std::string* error = nullptr) const;
  bool writeToFile(const std::filesystem::path& file, WriteMode mode,
                   std::string* error = nullptr) const {
    return writeToURL(file, mode, error);
  }

 private:
  QLOVector3dArray(std::uint64_t count, Precision precision);
  float* floatPlane(int axis) const;
  double* doublePlane(int axis) const;
  std::vector<float> planeAsFloats(int axis) const;
  double component(int axis, std::uint64_t index) const;

  std::uint64_t count_;
  Precision precision_;
  std::uint64_t stride_;  // elements between the starts of two planes
  void* storage_;         // 64-byte aligned, three planes of stride_ elements
};
