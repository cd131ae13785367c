#include "base/Files.h"
#include "support/WorldStory.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>

namespace kelvo::test {
namespace {

/// The exit status of the independent checker on the world's outputs directory.
int verdict(const World& world) {
    const std::string command =
        "python3 " KELVO_VERIFIER " '" + world.outputs().string() + "' > /dev/null 2>&1";
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(RecordVerifier, AcceptsWhatTwoRunsSealedAndFindsWhatWasChangedRemovedOrMadeUp) {
    WorldStory story;
    story.world.writeMesh({{"A/ü\t\x01\x7F", 0.1, 1}, {"B", 0, 3}, {"C", 0, 2}});
    story.act("write évidence \"1\".txt is x");
    for (int launch = 0; launch < 2; ++launch) {
        for (const char* line :
             {"start", "owner", "play", "fire 44", "bond", "choose évidence \"1\".txt",
              "closeGap A/ü\\t\\x01\\x7f", "attest [\"B\",\"Sign / read\",\"attest\"]",
              "secure [\"C\",\"Lock\",\"os\"]", "hours 24", "account Charles Babbage"})
            story.act(line);
    }
    const World& world = story.world;
    EXPECT_EQ(world.files().size(), 9U) << "five records, three of the second run, and the mesh";
    EXPECT_EQ(verdict(world), 0);

    // The first run's closing of a criterion, in the middle of its chain.
    std::filesystem::path file;
    std::string bytes;
    for (const std::string& name : world.files()) {
        const std::string text = readFile(world.outputs() / name).value_or("");
        if (text.find("\"gate_before\" : 0.1") == std::string::npos) continue;
        file = world.outputs() / name;
        bytes = text;
    }
    const auto with = [&](const std::string& from, const std::string& to) {
        std::string copy = bytes;
        return copy.replace(copy.find(from), from.size(), to);
    };
    for (const std::string& tampered :
         {with("\"gate_before\" : 0.1", "\"gate_before\" : 0.2"),
          with("\"appIndex\" : 2", "\"appIndex\" : 3"), with("Ada", "Eve"), std::string("{}"),
          std::string("[]"), std::string("not JSON")}) {
        world.write(file, tampered);
        EXPECT_EQ(verdict(world), 1) << tampered;
    }
    world.write(file, bytes);
    EXPECT_EQ(verdict(world), 0);
    std::filesystem::remove(file);
    EXPECT_EQ(verdict(world), 1) << "what follows hangs on nothing";
}

TEST(RecordVerifier, FindsWhatWasDoneToTheProofOfARealYear) {
    WorldStory story;
    story.world.writeMesh({{"A/ü\t\x01\x7F", 0.1, 1}, {"B", 0, 3}, {"C", 0, 2}, {"D", 0, 1}});
    story.act("write évidence \"1\".txt is x");
    for (const char* line : {"start",
                             "begin",
                             "owner",
                             "play",
                             "fire 44",
                             "bond",
                             "choose évidence \"1\".txt",
                             "closeGap A/ü\\t\\x01\\x7f",
                             "attest [\"B\",\"Sign: read\",\"attest\"]",
                             "secure [\"C\",\"Lock\",\"os\"]",
                             "period 2026-01-01 2026-12-31",
                             "document 0",
                             "document 3",
                             "dates x 2026-01-01 2026-01-31",
                             "note exception B - late",
                             "note withdrawal B 3 wrong",
                             "handOver package",
                             "drain",
                             "hours 24",
                             "start",
                             "begin",
                             "owner",
                             "drain"})
        story.act(line);
    const World& world = story.world;
    const std::filesystem::path whole = world.outputs().parent_path();
    const std::filesystem::path copy = world.root() / "tampered";
    const auto tampered = [&](const std::string& what) {
        std::filesystem::remove_all(copy);
        std::filesystem::copy(whole, copy, std::filesystem::copy_options::recursive);
        const std::string command = "cd '" + copy.string() + "' && chmod -R u+w . && " + what +
                                    " && exec python3 " KELVO_VERIFIER " outputs > said 2>&1";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    };
    const auto said = [&] { return readFile(copy / "said").value_or(""); };
    ASSERT_EQ(tampered("true"), 0) << said();
    EXPECT_NE(said().find("13 decisions in 1 log"), std::string::npos) << said();
    const std::pair<const char*, const char*> table[] = {
        {"sed -i 's/Sign: read/Sign: seen/' outputs/*", "altered"},
        {"rm outputs/control-2-*", "gone: a log names it"},
        {"cp outputs/control-2-* outputs/control-2-b.totem.json", "unlisted"},
        {"printf x >> proof/vault/$(printf x | sha256sum | cut -c -64)", "other bytes"},
        {"rm proof/vault/$(printf x | sha256sum | cut -c -64)", "is not in the vault"},
        {"sed -i 's/Close A/Close B/' proof/seals-*", "does not fit"},
        {"sed -i 4d proof/seals-*", "has seq"},
        {"sed -i '4{h;d};5{G}' proof/seals-*", "has seq"},
        {"sed -i '1s/\"v\":1/\"v\":1,\"x\":1/' proof/seals-*", "members of its kind"},
        {"sed -i '$a null' proof/seals-*", "is not an object"},
        {"sed -i \"\\$a $(printf '%9000s' | tr ' ' '[')\" proof/seals-*", "nested too deeply"},
        {"mv proof/seals-* proof/seals-0A000000.ndjson", "which its file does not"},
    };
    for (const auto& [what, finding] : table) {
        EXPECT_EQ(tampered(what), 1) << what;
        EXPECT_NE(said().find(finding), std::string::npos) << what << "\n" << said();
        EXPECT_EQ(said().find("Traceback"), std::string::npos) << said();
    }
    EXPECT_EQ(tampered("mv outputs elsewhere"), 2) << said();

    const std::string manifests =
        "; find data -type f | LC_ALL=C sort | xargs sha256sum > manifest-sha256.txt;"
        "sed -i \"s/^Payload-Oxum.*/Payload-Oxum: $(cat $(find data -type f) | wc -c)."
        "$(find data -type f | wc -l)/\" bag-info.txt;"
        "ls -p | grep -v -e / -e tagm | LC_ALL=C sort | xargs sha256sum > tagmanifest-sha256.txt; "
        "cd ..";
    const auto packed = [&](const std::string& what, const std::string& path) {
        return tampered("cp -r ../package/* outputs/p && cd outputs/p && " + what + manifests +
                        "; mv p package; python3 -m zipfile -c package.zip package; cd .. && exec "
                        "python3 " KELVO_VERIFIER " outputs/" +
                        path + " > said 2>&1");
    };
    ASSERT_EQ(packed("true", "package"), 0) << said();
    ASSERT_EQ(packed("true", "package.zip"), 0) << said();
    const std::pair<const char*, const char*> inside[] = {
        {"sed -i s/supported,annual/attested,annual/ data/readiness.csv", "assurance is"},
        {"sed -i 's/Ada Byron/Eve Byron/' data/decisions.csv", "person is"},
        {"sed -i 's/,kept,/,missing,/' data/evidence.csv", "kept is"},
        {"sed -i '1s/^...//' data/decisions.csv", "not in the form of a sheet"},
        {"sed -i 's/\"readiness\" : 0/\"readiness\" : 1/' data/summary.json", "readiness is not"},
        {"sed -i 's/\"g\": *0/\"g\":1/' data/graph/*.json", "the last run read"},
        {"rm data/evidence/*", "is not here"},
        {"rm data/records/*/000003-*", "is not here"},
        {"touch data/evidence/x", "the logs call for"},
        {"sed -i 's/^lines: .*/lines: 3/' data/checkpoint.txt", "of the checkpoint"},
        {"printf '{' >> data/logs/$(ls data/logs)", "that are no line"},
        {"ln -s /etc/passwd data/link", "is a link"},
        {"echo '{\"assessment-results\":{\"results\":[{}]}}' > data/assessment-results.json",
         "of another time"},
        {"echo '<p onclick=x>' > data/report.html", "holds a script"},
        {"echo '[]' > data/summary.json", "is not an object"},
    };
    for (const auto& [what, finding] : inside) {
        EXPECT_EQ(packed(what, "package"), 1) << what;
        EXPECT_NE(said().find(finding), std::string::npos) << what << "\n" << said();
        EXPECT_EQ(said().find("Traceback"), std::string::npos) << said();
    }
    const std::string entry =
        "python3 -c \"import zipfile; z = zipfile.ZipFile('outputs/x.zip', 'w'); "
        "z.writestr('../x', ''); z.close()\"";
    EXPECT_EQ(tampered(entry + " && exec python3 " KELVO_VERIFIER " outputs/x.zip > said 2>&1"), 1);
    EXPECT_NE(said().find("leads outside"), std::string::npos) << said();
}

} // namespace
} // namespace kelvo::test
