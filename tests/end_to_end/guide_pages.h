// The commands that the guides and READMEs show, as they stand there.
#pragma once

#include <string>
#include <vector>

namespace k7test {

struct ShownCommand {
  std::string text;
  std::vector<std::string> answer;  // the lines that the page shows below it; mostly none
};

// The pages, relative to the checkout.
std::vector<std::string> GuidePages();

// The commands of a page's text in their order: lines of blocks, and spans within the text.
std::vector<ShownCommand> CommandsOf(const std::string& page);

// The commands that an outline stands for: "a [--b|--c X] d|e" is "a d", "a --b d", "a --c X d" and
// "a e". A command that is none stands for itself.
std::vector<std::string> CommandsOfOutline(const std::string& outline);

// Its words, as a console makes them: quotes hold one together.
std::vector<std::string> WordsOf(const std::string& command);

// Whether a line is what a page shows; "..." there stands for anything.
bool IsShownAs(const std::string& shown, const std::string& line);

}  // namespace k7test
