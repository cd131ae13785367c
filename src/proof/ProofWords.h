#pragma once

#include "proof/ProofComparison.h"

#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// "17 decisions, log whole, last checkpoint 18 November (4 decisions since)", "25 decisions on 2
/// computers, logs whole, no checkpoint yet". Says nothing of troubles.
std::string wholeSentence(const ProofComparison& comparison);

/// What readiness counts that the logs do not say, or the other way round: "readiness counts 1
/// record that no log knows", "2 decisions of larkspur-02 are not counted yet". Empty where both
/// agree.
std::vector<std::string> readinessRemarks(const ProofComparison& comparison);

/// The line of trouble for all troubles of one kind and log, worst first: "1 record is gone.",
/// "Line 12 of the log of larkspur-02 does not follow line 11.". Only those that need a look.
std::vector<std::string> troubleLines(const ProofComparison& comparison);

/// "The last checkpoint is 35 days old.", or that there is none yet, once a month has passed since
/// it or since the first decision. Empty before that.
std::string checkpointReminder(const ProofComparison& comparison);

/// How a log is called: its computer, else the first 8 digits of its id.
std::string logName(std::string_view computer, std::string_view id);

/// "18 November", with the year where it is not that of `now`; both ISO 8601, in UTC.
std::string dayInWords(std::string_view moment, std::string_view now);

/// "Adopt 11 earlier records into the log — verify to keep"
std::string adoptSentence(std::size_t records);

/// "Supply the evidence NAME — verify to keep"
std::string supplySentence(std::string_view name);

} // namespace kelvo
