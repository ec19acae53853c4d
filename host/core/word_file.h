// Reading the stand-in host's text files (figures, positions, postures,
// scenes): blank-separated words, read as a stream with bounds, so that a
// file of the wrong kind or of unreasonable size is refused early instead of
// being taken into memory whole.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace hcio {

// A file is refused when it exceeds any of these.
constexpr std::size_t kMaxFileBytes = 16u << 20;  // 16 MiB
constexpr std::size_t kMaxWordBytes = 4096;       // longest word (escaped names)
constexpr std::size_t kMaxWords = 1u << 20;

// Reads the words of filename into words; false (words unspecified) when the
// file cannot be read, its first word is not magic, or it exceeds a bound.
bool readWords(const char *filename, const char *magic, std::vector<std::string> &words);
// The same for text held in memory.
bool splitWords(const std::string &text, const char *magic, std::vector<std::string> &words);

}  // namespace hcio
