// What the evidence carries, told in tests/data/proof: days and frequencies in, standings out.

#include "proof/Decisions.h"
#include "support/Story.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "Office.h"

namespace kelvo::test {
namespace {

std::vector<std::string> wordsOf(const std::string& text) {
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), {}};
}

/// "2026-01-01..2026-12-31", or one day.
DaySpan span(const std::string& text) {
    const auto dots = text.find("..");
    const Day from = parseIsoDay(text.substr(0, std::min<std::size_t>(dots, 10))).value();
    return {from, dots == text.npos ? from : parseIsoDay(text.substr(dots + 2)).value()};
}

/// A day alone is Type I.
AuditPeriod period(const std::string& text) {
    const DaySpan days = span(text);
    return {text.size() > 10, days.from, days.to, {}, {}};
}

Frequency frequency(const std::string& name) {
    for (int i = 0; i <= static_cast<int>(Frequency::event); ++i) {
        if (nameOf(static_cast<Frequency>(i)) == name) return static_cast<Frequency>(i);
    }
    throw std::runtime_error("no frequency: " + name);
}

std::string shown(const CriterionStanding& standing) {
    std::string text(nameOf(standing.standing));
    text += " " + std::to_string(standing.present) + " of " + std::to_string(standing.due);
    if (standing.freshUntil) text += ", until " + isoDay(*standing.freshUntil);
    if (standing.ranBefore) text += ", ran before the period";
    for (const Closing& each : standing.closings) {
        if (const auto late = each.recordedLate()) {
            text += ", recorded " + std::to_string(*late) + " days later";
        }
        if (each.voidDates) text += ", void";
    }
    return text;
}

class StandingStory : public Story {
public:
    StandingStory() {
        // "due quarterly 2026-01-01..2026-12-31 at 2026-11-23"
        figures["due"] = [](Rest rest) {
            const auto part = wordsOf(rest);
            std::string text;
            for (const DueInterval& each :
                 dueIntervals(frequency(part.at(0)), period(part.at(1)), span(part.at(3)).from)) {
                text += (text.empty() ? "" : " ") +
                        (each.days.from == firstDay ? "any" : isoDay(each.days.from)) + ".." +
                        isoDay(each.days.to);
                if (each.state == DueInterval::State::notOver) text += "?";
            }
            return text;
        };
        words["period"] = [this](Rest days) { further(period(days)); };
        words["criterion"] = [this](Rest rest) {
            const auto part = wordsOf(rest);
            criteria_.list.push_back({.id = part.at(0),
                                      .level = std::stod(part.at(2)),
                                      .weight = std::stoll(part.at(1)),
                                      .gap = {},
                                      .title = {},
                                      .trustServices = {},
                                      .frequency = frequency(part.at(3))});
        };
        // "close CC6 with review.pdf on 2026-01-31", by a document unless another means is named
        words["close"] = [this](Rest rest) {
            const auto part = wordsOf(rest);
            LoggedDecision& decision = next(part.at(4));
            decision.closes = true;
            decision.criterion = part.at(0);
            decision.evidenceRoot = part.at(2);
            decision.evidence = LoggedDecision::Evidence::kept;
            const std::string by = part.size() > 5 ? part[5] : "";
            using Means = LoggedDecision::Means;
            if (by == "word") decision.means = Means::attestation;
            if (by == "device") decision.means = Means::device;
            if (by == "policy") decision.means = Means::policy;
            if (by == "gone") decision.evidence = LoggedDecision::Evidence::gone;
            decision.withdrawn = by == "withdrawn";
            decision.repeated = by == "repeated";
        };
        // "dates review.pdf 2026-01-01..2026-01-31 on 2026-02-03"
        words["dates"] = [this](Rest rest) {
            const auto part = wordsOf(rest);
            EvidenceItem item;
            item.root = part.at(0);
            item.coversFrom = part.at(1).substr(0, 10);
            item.coversTo = part.at(1).substr(part.at(1).size() - 10);
            further(EvidenceDates{{item}}, part.at(3));
        };
        figures["of"] = [this](Rest rest) {
            const auto part = wordsOf(rest);
            return shown(*stand(part.at(2)).of(part.at(0)));
        };
        figures["supported"] = [this](Rest rest) {
            const ProofStanding all = stand(wordsOf(rest).at(1));
            std::array<char, 40> text{};
            std::snprintf(text.data(), text.size(), "%.1f%%, readiness %.1f%%", 100 * all.supported,
                          100 * all.readiness);
            return std::string(text.data());
        };
        figures["altered"] = [this](Rest rest) {
            const auto part = wordsOf(rest);
            return shown(*stand(part.at(3), part.at(0)).of(part.at(1)));
        };
    }

protected:
    std::vector<std::string> happened() override { return {}; }

private:
    LoggedDecision& next(const std::string& day) {
        decisions_.emplace_back().attestedAt = day + "T09:00:00Z";
        return decisions_.back();
    }
    void further(FurtherSeal seal, const std::string& day = "2026-01-01") {
        next(day).further = std::make_shared<FurtherSeal>(std::move(seal));
    }
    ProofStanding stand(const std::string& today, const std::string& altered = {}) const {
        return standingOf(criteria_, decisions_, span(today).from, {altered});
    }

    Criteria criteria_;
    std::vector<LoggedDecision> decisions_;
};

const int told = tellScenes<StandingStory>("Standing", KELVO_PROOF_DATA);

TEST(Standing, FollowsTheOrderOfAllLogsAndNotThatOfTheirIds) {
    Office office;
    office.graph = R"({"organisation":"Larkspur","nodes":[{"id":"A","g":0,"w":2,"evidence":""}]})";
    Computer ada(office, "larkspur-01");
    Computer grace(office, "larkspur-02");
    ada.close("A", "risks");
    const auto date = [&](Computer& who, const std::string& day) {
        office.clock.moment += std::chrono::minutes(1);
        EvidenceItem item;
        item.root = sha256Hex("risks");
        item.coversFrom = item.coversTo = day;
        Json payload = furtherPayload(EvidenceDates{{item}});
        payload["attested_at"] = iso8601(office.clock.now());
        who.seal(payload, std::nullopt);
    };
    date(grace, "2024-01-01");
    date(ada, "2026-01-03");
    for (Computer* each : {&ada, &grace}) {
        EXPECT_EQ(shown(*each->compare().standing.of("A")), "supported 1 of 1, until 2027-01-04");
        EXPECT_EQ(each->compare().standing.supported, 1);
    }
    date(grace, "2024-01-01");
    EXPECT_EQ(ada.compare().standing.of("A")->standing, Standing::stale);
}

} // namespace
} // namespace kelvo::test
