// The text of a settings file as the profile functions of Windows understand it: keys are read and
// replaced one by one, and every other line, comment and line end stays as it is.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace k7host {

// The system's code page, in which texts stand in a file without a Unicode mark. Names of sections
// and keys are ASCII, so that only values ask it.
class CodePage {
 public:
  virtual ~CodePage() = default;
  // UTF-8 of bytes of the code page. [any]
  virtual std::string ToUtf8(std::string_view bytes) const = 0;
  // The other way; none when a character is not in the code page. [any]
  virtual std::optional<std::string> FromUtf8(std::string_view text) const = 0;
};

struct IniEntry {
  std::string section;
  std::string key;
  std::string text;
};

// All texts in and out are UTF-8. Names are compared without regard to the case of ASCII letters;
// of sections and keys that stand there twice the first counts, as for the profile functions.
class IniText {
 public:
  // `page` must outlive the text. A file that starts with the UTF-16 mark is UTF-16, any other is
  // in the code page. [any]
  IniText(std::string_view bytes, const CodePage& page);

  // The file again; without a Set between, byte for byte what it was made of.
  std::string Bytes() const;

  // Text of a key, blanks and one pair of quotes around it cut off; none when it is missing.
  std::optional<std::string> Find(std::string_view section, std::string_view key) const;

  // Replaces the text of a key, or adds the key at the end of its section, the section at the end
  // of the file. False, and nothing is changed, when the text holds a line end or a character that
  // the file cannot hold.
  bool Set(std::string_view section, std::string_view key, std::string_view text);

  // Every line that is a key, in the order of the file; also those that a Find passes over.
  std::vector<IniEntry> Entries() const;

  // Whether the file has the three bytes in front that mark UTF-8, which the profile functions take
  // for a part of the first line: a section there is not seen.
  bool HasUtf8Mark() const;
  // Whether it is in UTF-16.
  bool IsUtf16() const { return utf16_; }
  // Whether it holds a null character, as no text does.
  bool HasNulls() const;

 private:
  // A unit of the file a character: a byte, or half a character of UTF-16.
  using Line = std::u16string;
  enum class Kind { Other, Section, Key };
  struct Parts {
    Kind kind = Kind::Other;
    std::string name;      // of the section or key
    std::size_t text = 0;  // where the text of the key starts: behind the "="
  };

  static Parts Split(const Line& line);
  std::string Utf8(std::u16string_view units) const;
  std::optional<std::u16string> Units(std::string_view text) const;
  std::string TextOf(const Line& line, const Parts& parts) const;
  const char16_t* LineEnd() const;

  const CodePage* page_;
  bool utf16_ = false;
  // The last byte of a UTF-16 file that was cut off in the middle of a character.
  std::string half_;
  std::vector<Line> lines_;  // each with its line end
};

// Whether two texts differ in the case of ASCII letters at most. [any]
bool SameName(std::string_view a, std::string_view b);

}  // namespace k7host
