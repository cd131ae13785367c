#pragma once

#include "ports/LanguageModel.h"
#include "responder/GroundTexts.h"
#include "responder/Stems.h"

#include <tl/expected.hpp>

#include <functional>
#include <string>

namespace kelvo {

/// Answers the model requests of this system without a model: by counting words and filling a form.
/// The same request over the same ground texts gives the same reply, to the byte; it reads nothing,
/// sends nothing and waits for nothing. Whatever the texts in a prompt ask for, the reply is only
/// ever a proposal of the record that was requested.
class BuiltInResponder {
public:
    /// `ground` is called at each request for the texts as they are then.
    explicit BuiltInResponder(std::function<GroundTexts()> ground);

    /// The reply's text, as a model would give it, or why this kind of request has no answer here.
    tl::expected<std::string, ModelFailure> respond(const ModelRequest& request) const;

private:
    std::function<GroundTexts()> ground_;
    Stems stems_;
};

} // namespace kelvo
