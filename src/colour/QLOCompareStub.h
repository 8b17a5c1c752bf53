#pragma once
// One category in colouring order: its value and the key it is sorted by.
#include <cstdint>
#include <memory>
#include <string>
#include <variant>

namespace colour {

class QLOCompareStub {
 public:
  // A count (frequency), a measure summed or averaged over the category, or
  // the category's own text.
  using SortObject = std::variant<std::int64_t, float, std::string>;

  QLOCompareStub(std::string object, SortObject sortObject, std::uint32_t category = 0)
      : theObject_(std::move(object)), sortObject_(std::move(sortObject)), category_(category) {}
  static std::shared_ptr<QLOCompareStub> initWithObject(std::string object, SortObject sortObject) {
    return std::make_shared<QLOCompareStub>(std::move(object), std::move(sortObject));
  }

  const std::string& theObject() const { return theObject_; }
  const SortObject& sortObject() const { return sortObject_; }
  void setTheObject(std::string object) { theObject_ = std::move(object); }
  void setSortObject(SortObject sortObject) { sortObject_ = std::move(sortObject); }
  // The category's number in the CategoryIndex it was made from.
  std::uint32_t category() const { return category_; }

  // -1, 0 or 1 as this stub's sort key sorts before, with or after the
  // other's. Numbers compare by value (NaN after every number, equal to NaN),
  // texts with digit runs as numbers (textorder.h), and numbers before texts.
  int compare(const QLOCompareStub& other) const;
  int compareInverse(const QLOCompareStub& other) const { return -compare(other); }

 private:
  std::string theObject_;
  SortObject sortObject_;
  std::uint32_t category_;
};

}  // namespace colour
