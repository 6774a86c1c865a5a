#include "settings/ini_text.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <type_traits>

#include "core/text.h"

namespace k7host {
namespace {

constexpr std::string_view kUtf16Mark = "\xFF\xFE";
constexpr std::u16string_view kUtf8Mark = u"\u00EF\u00BB\u00BF";  // a byte a unit

bool IsBlank(char16_t c) {
  return c <= u' ';
}

// The line without blanks at both ends, its line end being blanks, too.
std::u16string_view Trimmed(std::u16string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Names are ASCII; a character beyond it makes a name that none of ours equals.
std::string Name(std::u16string_view text) {
  std::string name;
  for (const char16_t c : Trimmed(text)) name += c < 0x80 ? static_cast<char>(c) : '?';
  return name;
}

std::size_t EndOfContent(std::u16string_view line) {
  std::size_t end = line.size();
  while (end > 0 && (line[end - 1] == u'\r' || line[end - 1] == u'\n')) --end;
  return end;
}

}  // namespace

bool SameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return Lower(x) == Lower(y); });
}

IniText::IniText(std::string_view bytes, const CodePage& page) : page_(&page) {
  utf16_ = bytes.substr(0, kUtf16Mark.size()) == kUtf16Mark;
  std::u16string units;
  if (utf16_) {
    std::size_t i = kUtf16Mark.size();
    for (; i + 1 < bytes.size(); i += 2) {
      const auto low = static_cast<std::uint8_t>(bytes[i]);
      const auto high = static_cast<std::uint8_t>(bytes[i + 1]);
      units += static_cast<char16_t>(low | high << 8);
    }
    half_ = bytes.substr(i);
  } else {
    for (const char c : bytes) units += static_cast<std::uint8_t>(c);
  }
  for (std::size_t at = 0; at < units.size();) {
    const std::size_t end = units.find(u'\n', at);
    const std::size_t next = end == std::u16string::npos ? units.size() : end + 1;
    lines_.push_back(units.substr(at, next - at));
    at = next;
  }
}

std::string IniText::Bytes() const {
  std::string bytes(utf16_ ? kUtf16Mark : std::string_view());
  for (const Line& line : lines_) {
    for (const char16_t unit : line) {
      bytes += static_cast<char>(unit & 0xFF);
      if (utf16_) bytes += static_cast<char>(unit >> 8);
    }
  }
  return bytes + half_;
}

IniText::Parts IniText::Split(const Line& line) {
  const std::u16string_view whole = line;
  const std::u16string_view content = Trimmed(whole);
  if (content.empty() || content.front() == u';') return {};
  if (content.front() == u'[') {
    const std::size_t end = content.find(u']');
    if (end == std::u16string_view::npos) return {};
    return {Kind::Section, Name(content.substr(1, end - 1)), 0};
  }
  const std::size_t equals = whole.find(u'=');
  if (equals == std::u16string_view::npos) return {};
  return {Kind::Key, Name(whole.substr(0, equals)), equals + 1};
}

std::string IniText::Utf8(std::u16string_view units) const {
  if (utf16_) {
    std::wstring wide;
    for (const char16_t unit : units) wide += static_cast<wchar_t>(unit);
    return NarrowText(wide);
  }
  std::string bytes;
  for (const char16_t unit : units) bytes += static_cast<char>(unit);
  return page_->ToUtf8(bytes);
}

std::optional<std::u16string> IniText::Units(std::string_view text) const {
  std::u16string units;
  if (utf16_) {
    for (const wchar_t wide : WideText(text)) {
      // Through the unsigned type of the same width: a wide character may be signed.
      const auto c = std::uint32_t{std::bit_cast<std::make_unsigned_t<wchar_t>>(wide)};
      if (c >= 0x10000) {
        units += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
        units += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
      } else {
        units += static_cast<char16_t>(c);
      }
    }
    return units;
  }
  const std::optional<std::string> bytes = page_->FromUtf8(text);
  if (!bytes) return std::nullopt;
  for (const char c : *bytes) units += static_cast<std::uint8_t>(c);
  return units;
}

std::string IniText::TextOf(const Line& line, const Parts& parts) const {
  std::u16string_view text = Trimmed(std::u16string_view(line).substr(parts.text));
  const bool quoted = text.size() >= 2 && text.front() == text.back() &&
                      (text.front() == u'"' || text.front() == u'\'');
  if (quoted) text = text.substr(1, text.size() - 2);
  return Utf8(text);
}

std::optional<std::string> IniText::Find(std::string_view section, std::string_view key) const {
  bool inside = false;
  for (const Line& line : lines_) {
    const Parts parts = Split(line);
    if (parts.kind == Kind::Section) {
      if (inside) return std::nullopt;
      inside = SameName(parts.name, section);
    } else if (inside && parts.kind == Kind::Key && SameName(parts.name, key)) {
      return TextOf(line, parts);
    }
  }
  return std::nullopt;
}

// As the file has it, or as Windows writes it.
const char16_t* IniText::LineEnd() const {
  for (const Line& line : lines_) {
    if (line.back() == u'\n') return EndOfContent(line) + 1 == line.size() ? u"\n" : u"\r\n";
  }
  return u"\r\n";
}

bool IniText::Set(std::string_view section, std::string_view key, std::string_view text) {
  if (text.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos) return false;
  std::optional<std::u16string> units = Units(text);
  if (!units) return false;
  // Whoever reads the text cuts off blanks and a pair of quotes.
  const auto edge = [&](char16_t c) { return IsBlank(c) || c == u'"' || c == u'\''; };
  if (!units->empty() && (edge(units->front()) || edge(units->back()))) {
    *units = u"\"" + *units + u"\"";
  }

  bool inside = false;
  std::size_t behind = 0;  // the last line of the section that is not blank, counted from 1
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    Line& line = lines_[i];
    const Parts parts = Split(line);
    if (parts.kind == Kind::Section) {
      if (inside) break;
      inside = SameName(parts.name, section);
    } else if (inside && parts.kind == Kind::Key && SameName(parts.name, key)) {
      line.replace(parts.text, EndOfContent(line) - parts.text, *units);
      return true;
    }
    if (inside && !Trimmed(line).empty()) behind = i + 1;
  }
  const std::u16string end = LineEnd();
  if (!lines_.empty() && lines_.back().back() != u'\n') lines_.back() += end;
  const auto ascii = [](std::string_view name) { return std::u16string(name.begin(), name.end()); };
  if (behind == 0) {
    lines_.push_back(u"[" + ascii(section) + u"]" + end);
    behind = lines_.size();
  }
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(behind),
                ascii(key) + u"=" + *units + end);
  return true;
}

std::vector<IniEntry> IniText::Entries() const {
  std::vector<IniEntry> entries;
  std::string section;
  for (const Line& line : lines_) {
    const Parts parts = Split(line);
    if (parts.kind == Kind::Section) section = parts.name;
    if (parts.kind == Kind::Key) entries.push_back({section, parts.name, TextOf(line, parts)});
  }
  return entries;
}

bool IniText::HasUtf8Mark() const {
  return !utf16_ && !lines_.empty() && lines_.front().starts_with(kUtf8Mark);
}

bool IniText::HasNulls() const {
  return std::any_of(lines_.begin(), lines_.end(),
                     [](const Line& line) { return line.find(u'\0') != Line::npos; });
}

}  // namespace k7host
