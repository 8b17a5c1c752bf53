#include "quillo/ReadError.h"

#include "quillo/utf8.h"

std::string ReadError::describe() const {
  std::string text = file.empty() ? std::string("input") : file;
  if (line > 0) text += ", line " + std::to_string(line);
  text += ": ";
  text += message.empty() ? std::string("could not be read") : message;
  // File names and quoted file text may hold any bytes; the description is
  // shown in alerts, on terminals and as Python text, so it is kept UTF-8.
  return quillo::printable(text);
}
