#include "guide_pages.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>
#include <sstream>

#include "settings_files.h"

namespace k7test {

namespace fs = std::filesystem;

namespace {

// What a line or span starts with when it is a command.
const std::regex kCommand{
    R"(^(\w+=\S+ )*(k7host|k7sim|\./k7|build/\S+|tests/\S+|cmake|ctest|curl|echo|git|icacls|ln|mode|)"
    R"(pkg-config|python3|apt-get) +\S)"};
const std::regex kRemark{R"(\s+#|\s{2,})"};
const std::string kPrompt = "> ";
const std::string kIndent = "    ";

bool IsCommand(const std::string& text) {
  return std::regex_search(text, kCommand);
}

std::string WithoutRemark(const std::string& line) {
  std::smatch remark;
  return std::regex_search(line, remark, kRemark) ? remark.prefix().str() : line;
}

// The lines of a block: a command behind a prompt has what follows as its answer, and any other
// line that is a command a remark behind it.
void TakeBlock(const std::vector<std::string>& lines, std::vector<ShownCommand>& commands) {
  bool answers = false;
  for (const std::string& line : lines) {
    if (line.starts_with(kPrompt)) {
      commands.push_back({line.substr(kPrompt.size()), {}});
      answers = true;
    } else if (answers) {
      commands.back().answer.push_back(line);
    } else if (IsCommand(line)) {
      commands.push_back({WithoutRemark(line), {}});
    }
  }
}

void TakeSpans(const std::string& text, std::vector<ShownCommand>& commands) {
  static const std::regex span{"`([^`]+)`"};
  for (std::sregex_iterator it(text.begin(), text.end(), span), end; it != end; ++it) {
    std::string shown = (*it)[1].str();
    std::replace(shown.begin(), shown.end(), '\n', ' ');
    if (IsCommand(shown)) commands.push_back({shown, {}});
  }
}

// Where the alternatives of an outline end: bars that stand in no bracket.
std::vector<std::string> Alternatives(const std::string& text) {
  std::vector<std::string> all(1);
  int depth = 0;
  for (const char c : text) {
    depth += c == '[' ? 1 : c == ']' ? -1 : 0;
    if (c == '|' && depth == 0) {
      all.emplace_back();
    } else {
      all.back() += c;
    }
  }
  return all;
}

// The outline's parts: words, and what stands in one pair of brackets.
std::vector<std::string> Parts(const std::string& outline) {
  std::vector<std::string> parts(1);
  int depth = 0;
  bool quoted = false;
  for (const char c : outline) {
    depth += c == '[' ? 1 : c == ']' ? -1 : 0;
    quoted = quoted != (c == '"' || c == '\'');
    if (c == ' ' && depth == 0 && !quoted) {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

}  // namespace

std::vector<std::string> GuidePages() {
  std::vector<std::string> pages = {"README.md", "CONTRIBUTING.md", "host/README.md",
                                    "simulator/README.md"};
  for (const auto& entry : fs::directory_iterator(Places::Get().source / "docs")) {
    if (entry.path().extension() == ".md")
      pages.push_back("docs/" + entry.path().filename().string());
  }
  std::sort(pages.begin() + 4, pages.end());
  return pages;
}

std::vector<ShownCommand> CommandsOf(const std::string& page) {
  std::vector<ShownCommand> commands;
  std::vector<std::string> block;
  std::string text;
  const auto end = [&] {
    TakeSpans(text, commands);
    TakeBlock(block, commands);
    text.clear();
    block.clear();
  };
  std::istringstream lines(page);
  bool fenced = false;
  for (std::string line; std::getline(lines, line);) {
    const bool fence = line.starts_with("```");
    const bool indented = !fenced && line.starts_with(kIndent);
    if (fence || line.empty() || (!fenced && indented == block.empty())) end();
    if (fence) {
      fenced = !fenced;
    } else if (fenced || indented) {
      block.push_back(indented ? line.substr(kIndent.size()) : line);
    } else {
      text += line + "\n";
    }
  }
  end();
  return commands;
}

std::vector<std::string> CommandsOfOutline(const std::string& outline) {
  const std::vector<std::string> parts = Parts(outline);
  // Each part in its shortest form; then each of its other forms, one at a time.
  std::vector<std::vector<std::string>> forms;
  for (const std::string& part : parts) {
    const bool optional = part.starts_with("[") && part.ends_with("]");
    forms.push_back(Alternatives(optional ? part.substr(1, part.size() - 2) : part));
    if (optional) forms.back().insert(forms.back().begin(), "");
  }
  const auto command = [&](std::size_t at, std::size_t form) {
    std::string text;
    for (std::size_t i = 0; i < forms.size(); ++i) {
      const std::string& word = forms[i][i == at ? form : 0];
      if (!word.empty()) text += (text.empty() ? "" : " ") + word;
    }
    return text;
  };
  std::vector<std::string> commands = {command(0, 0)};
  for (std::size_t at = 0; at < forms.size(); ++at) {
    for (std::size_t form = 1; form < forms[at].size(); ++form)
      commands.push_back(command(at, form));
  }
  return commands;
}

std::vector<std::string> WordsOf(const std::string& command) {
  std::vector<std::string> words = Parts(command);
  for (std::string& word : words) std::erase_if(word, [](char c) { return c == '"' || c == '\''; });
  return words;
}

bool IsShownAs(const std::string& shown, const std::string& line) {
  const std::string any = "...";
  std::size_t at = 0, from = 0;
  for (bool first = true;; first = false) {
    const std::size_t next = shown.find(any, from);
    const std::string piece = shown.substr(from, next - from);
    const bool last = next == std::string::npos;
    std::size_t found = line.find(piece, at);
    if (last && !first && line.size() >= at + piece.size()) found = line.size() - piece.size();
    if (found == std::string::npos || line.compare(found, piece.size(), piece) != 0) return false;
    if (first && found != 0) return false;
    at = found + piece.size();
    if (last) return at == line.size();
    from = next + any.size();
  }
}

}  // namespace k7test
