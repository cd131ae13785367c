#include "support/Story.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace kelvo::test {
namespace {

std::pair<std::string, std::string> cut(const std::string& text, const std::string& at) {
    const auto place = text.find(at);
    if (place == std::string::npos) return {text, {}};
    return {text.substr(0, place), text.substr(place + at.size())};
}

bool fits(const std::string& line, const std::string& pattern) {
    if (!pattern.ends_with('*')) return line == pattern;
    return line.starts_with(pattern.substr(0, pattern.size() - 1));
}

} // namespace

std::vector<Scene> scenesIn(const std::string& folder) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".story") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    std::vector<Scene> scenes;
    for (const auto& file : files) {
        std::ifstream lines(file);
        for (std::string line; std::getline(lines, line);) {
            if (line.starts_with("== ")) {
                scenes.push_back({file.string(), line.substr(3), {}});
            } else if (!line.empty()) {
                scenes.back().lines.push_back(line);
            }
        }
    }
    return scenes;
}

std::string nameOf(const Scene& scene) {
    std::string name;
    bool begins = true;
    for (const char c : scene.title) {
        const auto byte = static_cast<unsigned char>(c);
        if (std::isalnum(byte) != 0) name += begins ? static_cast<char>(std::toupper(byte)) : c;
        begins = std::isalnum(byte) == 0 && c != '\'';
    }
    return name;
}

std::string unescaped(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char next = text[i] == '\\' && i + 1 < text.size() ? text[i + 1] : '\0';
        if (next == 'x') {
            out += static_cast<char>(std::stoi(text.substr(i + 2, 2), nullptr, 16));
            i += 3;
        } else if (next != '\0') {
            out += next == 'n' ? '\n' : next == 't' ? '\t' : next;
            ++i;
        } else {
            out += text[i];
        }
    }
    return out;
}

std::string escaped(const std::string& text) {
    std::string out;
    for (const char c : text) {
        if (c == '\n') {
            out += "\\n";
        } else if (c == '\t') {
            out += "\\t";
        } else {
            out += c == '\\' ? std::string("\\\\") : std::string(1, c);
        }
    }
    return out;
}

void Story::act(const std::string& line) {
    const auto [word, rest] = cut(line, " ");
    const auto known = words.find(word);
    if (known == words.end()) throw std::runtime_error("no such word: " + line);
    known->second(unescaped(rest));
    acted();
}

void Story::tell(const Scene& scene) {
    std::string really;
    for (std::size_t i = 0; i < scene.lines.size(); ++i) {
        const std::string& line = scene.lines[i];
        really += line.starts_with('?') ? "" : line + "\n";
        if (line.starts_with('#')) continue;
        if (line.starts_with("? ")) {
            const auto [asked, expected] = cut(line.substr(2), " = ");
            const auto [figure, rest] = cut(asked, " ");
            ASSERT_TRUE(figures.contains(figure)) << line;
            std::string found = escaped(figures[figure](unescaped(rest)));
            if (found.empty()) found = "nothing";
            EXPECT_TRUE(fits(found, expected)) << line << "\n  is " << found;
            really += "? " + asked + " = " + found + "\n";
            continue;
        }
        happened();
        act(line);
        std::vector<std::string> expected;
        while (i + 1 < scene.lines.size() && scene.lines[i + 1].starts_with("> "))
            expected.push_back(scene.lines[++i].substr(2));
        if (expected.empty()) continue;
        std::vector<std::string> effects = happened();
        if (effects.empty()) effects.emplace_back("nothing");
        std::string shown;
        for (std::string& effect : effects) {
            effect = escaped(effect);
            shown += "> " + effect + "\n";
        }
        EXPECT_TRUE(std::ranges::equal(effects, expected, fits)) << line << "\n" << shown;
        really += shown;
    }
    if (std::getenv("KELVO_RECORD") != nullptr) {
        std::ofstream(scene.file + ".recorded", std::ios::app) << "== " << scene.title << "\n"
                                                               << really << "\n";
    }
}

} // namespace kelvo::test
