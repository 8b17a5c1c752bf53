#include "quillo/ReadError.h"

std::string ReadError::describe() const {
  std::string text = file.empty() ? std::string("input") : file;
  if (line > 0) text += ", line " + std::to_string(line);
  text += ": ";
  text += message;
  return text;
}
