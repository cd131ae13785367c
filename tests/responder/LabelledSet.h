#pragma once

#include "responder/GroundTexts.h"

#include <string>
#include <vector>

namespace kelvo::test {

/// A short document and the criteria that a person says it is evidence for.
struct LabelledDocument {
    std::string name;
    std::vector<std::string> expected;
    std::string text;
};

/// Reads a part of the labelled set: "=== name | id id", then the text up to the next such line.
std::vector<LabelledDocument> labelledDocuments(const std::string& part);

/// The thirteen criteria and nine families that the labels speak of.
GroundTexts labelledGround();

/// The ground texts of a readiness mesh file's bytes, with the nine families.
GroundTexts groundOf(const std::string& meshFile);

} // namespace kelvo::test
