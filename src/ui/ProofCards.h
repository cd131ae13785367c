#pragma once

#include "ledger/UnwrittenRecords.h"
#include "proof/ProofKeeper.h"

#include <QString>
#include <QStringList>
#include <QVariantList>
#include <functional>
#include <optional>
#include <vector>

namespace kelvo {

/// Something on the Proof page that wants a look, or says why nobody need look: a title, what it
/// is about, what it means, and what can be done.
struct ProofCard {
    /// What the card's buttons do, in their order.
    enum class Action { restore, view, adopt, openFolder, retry, saveElsewhere, supply };

    QString title{};
    QString symbol{};
    QString name{};   ///< of the record file; empty where the card is not about one
    QString detail{}; ///< quiet words under the name
    QString text{};
    QString note{}; ///< beside the buttons
    bool amber = true;
    QVariantList members{}; ///< of {"member", "sealed", "now"}: what differs
    std::vector<Action> actions{};
    std::vector<std::string> files{}; ///< the records that the actions are about
    std::string evidence{};           ///< the hash of the evidence that the actions are about

    bool operator==(const ProofCard&) const = default;
};

/// What the button of an action says, for a card.
QString actionLabel(const ProofCard& card, ProofCard::Action action);

/// What a record file says of itself: criterion, person, time. None where it cannot be read.
struct RecordGlance {
    QString criterion;
    QString owner;
    QString asOf; ///< ISO 8601
};
using GlanceAt = std::function<std::optional<RecordGlance>(const std::string& file)>;

/// The cards of a comparison, worst first; decisions of which something is not on disk come before
/// all. `glance` looks at a record that no log knows.
std::vector<ProofCard> proofCards(const ProofComparison& comparison,
                                  const std::vector<Unkept>& unkept,
                                  const std::vector<UnwrittenRecords::Entry>& unwritten,
                                  const GlanceAt& glance);

/// "3 July", with the year where it is another than that of `now`; local time, both ISO 8601.
QString dayOf(const std::string& moment, const std::string& now);

/// "09:15", local time.
QString timeOf(const std::string& moment);

} // namespace kelvo
