#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <utility>
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

/// Scenes in which nothing happens: "? figure of what it is given = value" alone.
class Facts : public Story {
protected:
    std::vector<std::string> happened() override { return {}; }
};

/// Makes each scene of a folder a test of the suite, told by a Teller of its own.
template <class Teller>
int tellScenes(const char* suite, const std::string& folder) {
    class Told : public testing::Test {
    public:
        explicit Told(Scene scene) : scene_(std::move(scene)) {}
        void TestBody() override { Teller().tell(scene_); }

    private:
        Scene scene_;
    };
    int count = 0;
    for (const Scene& scene : scenesIn(folder)) {
        testing::RegisterTest(suite, nameOf(scene).c_str(), nullptr, nullptr, scene.file.c_str(),
                              ++count, [scene]() -> testing::Test* { return new Told(scene); });
    }
    return count;
}

} // namespace kelvo::test
