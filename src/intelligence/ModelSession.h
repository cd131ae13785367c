#pragma once

#include "intelligence/Generable.h"
#include "intelligence/ReplyText.h"
#include "ports/LanguageModel.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace kelvo {

/// The first interface level of the model layer that can be asked at all.
inline constexpr int requiredOsMajorVersion = 26;

/// True when the model layer is recent enough and a model can be asked now.
bool modelAvailable(LanguageModel& model);

/// One session: the instructions, one prompt, one typed record back. `done` gets the record, or why
/// there is none (the model's failure, or the field that the reply lacks); it is never called from
/// inside this call.
template <class Record>
void generate(LanguageModel& model, const std::string& instructions, const std::string& prompt,
              std::function<void(tl::expected<Record, ModelFailure>)> done) {
    model.respond({.instructions = instructions,
                   .prompt = prompt,
                   .recordName = Generable<Record>::name,
                   .schema = jsonSchema<Record>()},
                  [done = std::move(done)](tl::expected<std::string, ModelFailure> reply) {
                      if (!reply) return done(tl::unexpected(reply.error()));
                      auto record = readGenerable<Record>(jsonBody(*reply));
                      if (!record) return done(tl::unexpected(ModelFailure{record.error()}));
                      done(std::move(*record));
                  });
}

/// As `generate` for plain text.
void generateText(LanguageModel& model, const std::string& instructions, const std::string& prompt,
                  std::function<void(tl::expected<std::string, ModelFailure>)> done);

} // namespace kelvo
