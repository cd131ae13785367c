#pragma once

#include "responder/GroundTexts.h"
#include "responder/Stems.h"

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kelvo {

/// How well a document speaks of a criterion.
struct CriterionMatch {
    std::string id;
    double score = 0.0;
    std::vector<std::string>
        phrases; ///< what it speaks of, the most telling first, as in the table
};

/// Ranks criteria by the words of a document: BM25 (Robertson and Zaragoza, "The Probabilistic
/// Relevance Framework", 2009, eq. 3.15) with the document as the text and each criterion's profile
/// as a weighted query. A profile is the vocabulary of the subjects that the criterion's id names,
/// the words of the id, of the mesh's evidence text and of the family's texts.
///
/// Deterministic, and blind to what a text asks for: an instruction in a document is only words.
class CriterionRanking {
public:
    CriterionRanking(const Stems& stems, const std::vector<std::string>& ids,
                     const GroundTexts& ground);

    /// Every criterion with a score above zero, best first, equal scores in the order of the ids.
    std::vector<CriterionMatch> rank(std::string_view document) const;

    /// Those of `rank` that the document says enough about to be proposed as evidence; often one,
    /// none for a document about something else.
    std::vector<CriterionMatch> evidenced(std::string_view document) const;

private:
    using Phrase = std::vector<std::string>; ///< stems
    struct Term {
        Phrase stems;
        std::string shown;
        double rarity = 0.0;                                ///< inverse document frequency
        std::vector<std::pair<std::size_t, double>> weight; ///< by criterion
    };

    void addProfile(std::size_t criterion, std::string_view id, const GroundTexts& ground);
    void addVocabulary(std::size_t criterion, std::string_view phrases, double weight);
    void addWords(std::size_t criterion, std::string_view text, double weight);
    void addTerm(std::size_t criterion, Phrase stems, std::string shown, double weight);
    void countRarity(const GroundTexts& ground);
    std::map<std::size_t, double> occurrences(std::string_view document, double& length) const;

    const Stems& stems_;
    std::vector<std::string> ids_;
    std::map<Phrase, std::size_t> termOf_;
    std::vector<Term> terms_;
    std::unordered_map<std::string, std::vector<std::size_t>> termsByFirstStem_;
};

} // namespace kelvo
