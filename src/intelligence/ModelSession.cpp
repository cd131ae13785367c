#include "intelligence/ModelSession.h"

namespace kelvo {

bool modelAvailable(LanguageModel& model) {
    return model.osMajorVersion() >= requiredOsMajorVersion && !model.unavailableReason();
}

void generateText(LanguageModel& model, const std::string& instructions, const std::string& prompt,
                  std::function<void(tl::expected<std::string, ModelFailure>)> done) {
    model.respond({.instructions = instructions, .prompt = prompt, .recordName = {}},
                  [done = std::move(done)](tl::expected<std::string, ModelFailure> reply) {
                      if (reply) reply = std::string(withoutThinking(*reply));
                      done(std::move(reply));
                  });
}

} // namespace kelvo
