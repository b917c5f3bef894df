// SPDX-License-Identifier: MIT
// picture FONT OUT.png [--size COLUMNSxROWS] [--term TERM] [--keys STEP...] [-- PROGRAM
// ARGUMENT...]
//
// Runs a program in a terminal, presses keys, and writes a picture of its screen. A step is the
// name of a key (F2, Enter), or type:TEXT, or wait:TEXT.
#include <cstdio>
#include <exception>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "harness/picture/image.h"
#include "harness/terminal.h"

namespace {

using Harness::Terminal;

struct Task {
  std::string font;
  std::string output;
  Harness::Size size;
  std::vector<std::string> steps;
  Harness::Launch launch;
};

Harness::Size sizeFrom(const std::string& text) {
  Harness::Size size;
  if (std::sscanf(text.c_str(), "%dx%d", &size.columns, &size.rows) != 2 || size.rows < 1 ||
      size.columns < 1) {
    throw std::invalid_argument("not a size: " + text);
  }
  return size;
}

Task taskFrom(std::span<char*> arguments) {
  Task task;
  std::vector<std::string> names;
  std::vector<std::string>* rest = &names;
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const std::string argument = arguments[i];
    const auto value = [&] { return std::string(i + 1 < arguments.size() ? arguments[++i] : ""); };
    if (rest == &task.launch.arguments) {
      rest->push_back(argument);
    } else if (argument == "--") {
      rest = &task.launch.arguments;
    } else if (argument == "--keys") {
      rest = &task.steps;
    } else if (argument == "--size") {
      task.size = sizeFrom(value());
    } else if (argument == "--term") {
      task.launch.term = value();
    } else {
      rest->push_back(argument);
    }
  }
  if (names.size() != 2) throw std::invalid_argument("give a font and a file to write");
  task.font = names[0];
  task.output = names[1];
  if (task.launch.arguments.empty()) {
    task.launch.arguments = {KIVA_BINARY_DIR "/kiva-demo"};
  }
  return task;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const Task task = taskFrom({argv, static_cast<std::size_t>(argc)});
    const Picture::Font font(task.font);
    Terminal terminal(task.launch, task.size);
    terminal.Settle();
    terminal.Do(task.steps);
    Picture::writePng(Picture::draw(terminal.Look(), terminal.Palette(), font), task.output);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "picture: %s\n", error.what());
    return 1;
  }
}
