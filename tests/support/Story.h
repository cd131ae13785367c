#pragma once

#include <functional>
#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace kelvo::test {

/// One test that is told in a file: "== title", then a line for each thing that is done ("closeGap
/// B"), "> …" behind it for all that happened ("> nothing" for nothing), and "? figure = value" for
/// what holds then. A line that begins with "#" is a remark.
struct Scene {
    std::string file;
    std::string title;
    std::vector<std::string> lines;
};
void PrintTo(const Scene& scene, std::ostream* out);

/// All scenes of the files "*.story" in a folder, in the order of their names.
std::vector<Scene> scenesIn(const std::string& folder);

/// The title as the name of a test: "A second start" is "ASecondStart".
std::string nameOf(const Scene& scene);

/// "\n", "\t", "\\" and "\x1b" as the bytes that they stand for, and back.
std::string unescaped(const std::string& text);
std::string escaped(const std::string& text);

/// Tells scenes: knows what the words of their lines do and how to look at what came of it.
class Story {
public:
    virtual ~Story() = default;

    /// Does what the lines say and holds what came of it against them. With KELVO_RECORD set,
    /// writes the scene as it really went behind the others of "<file>.recorded" instead.
    void tell(const Scene& scene);
    /// Does one line.
    void act(const std::string& line);

protected:
    using Rest = const std::string&; ///< of the line, without its escapes

    /// What has happened since the last call, a line each.
    virtual std::vector<std::string> happened() = 0;
    /// Comes after each line that was done.
    virtual void acted() {}

    std::map<std::string, std::function<void(Rest)>> words;
    std::map<std::string, std::function<std::string(Rest)>> figures;
};

} // namespace kelvo::test
