#include "platform/presence/PamStack.h"

#include "base/Text.h"

#include <security/pam_appl.h>

#include <cstdlib>
#include <cstring>
#include <string_view>

namespace kelvo {
namespace {

/// More than any module says; what a person is shown stays readable.
constexpr std::size_t longestText = 1000;

std::string shown(const char* text) {
    if (text == nullptr) return {};
    const std::string valid = toValidUtf8(text);
    return std::string(trimmed(firstCharacters(valid, longestText)));
}

/// Answers in the memory that PAM expects to free. What is not handed over is wiped.
class Answers {
public:
    explicit Answers(int count)
        : count_(count), answers_(static_cast<pam_response*>(
                             std::calloc(static_cast<std::size_t>(count), sizeof(pam_response)))) {}
    ~Answers() {
        for (int i = 0; answers_ != nullptr && i < count_; ++i) {
            char* text = answers_[i].resp;
            if (text == nullptr) continue;
            ::explicit_bzero(text, std::strlen(text));
            std::free(text);
        }
        std::free(answers_);
    }
    Answers(const Answers&) = delete;
    Answers& operator=(const Answers&) = delete;

    bool valid() const { return answers_ != nullptr; }
    bool set(int index, std::string_view text) {
        // An empty view may have no address at all.
        answers_[index].resp = text.empty() ? ::strdup("") : ::strndup(text.data(), text.size());
        return answers_[index].resp != nullptr;
    }
    pam_response* release() { return std::exchange(answers_, nullptr); }

private:
    int count_;
    pam_response* answers_;
};

bool answerOne(const pam_message& message, int index, Answers& answers, PamConversation& person) {
    switch (message.msg_style) {
    case PAM_TEXT_INFO:
    case PAM_ERROR_MSG:
        person.tell(shown(message.msg), message.msg_style == PAM_ERROR_MSG);
        return true;
    case PAM_PROMPT_ECHO_ON:
    case PAM_PROMPT_ECHO_OFF: {
        const auto answer = person.ask(shown(message.msg), message.msg_style == PAM_PROMPT_ECHO_ON);
        return answer && answers.set(index, answer->view());
    }
    default:
        return false; // binary and radio prompts have no meaning for a person at this window
    }
}

/// PAM calls this from C: nothing may be thrown through it.
int converse(int count, const pam_message** messages, pam_response** responses,
             void* person) noexcept {
    if (count <= 0 || count > PAM_MAX_NUM_MSG) return PAM_CONV_ERR;
    Answers answers(count);
    if (!answers.valid()) return PAM_BUF_ERR;
    for (int i = 0; i < count; ++i) {
        if (!answerOne(*messages[i], i, answers, *static_cast<PamConversation*>(person))) {
            return PAM_CONV_ERR;
        }
    }
    // Some modules only tell and want no answers back.
    if (responses != nullptr) *responses = answers.release();
    return PAM_SUCCESS;
}

bool isFor(pam_handle_t* handle, const std::string& user) {
    const void* name = nullptr;
    return ::pam_get_item(handle, PAM_USER, &name) == PAM_SUCCESS && name != nullptr &&
           user == static_cast<const char*>(name);
}

} // namespace

int PamStack::start(const std::string& service, const std::string& user,
                    const pam_conv& conversation, pam_handle** handle) const {
    return ::pam_start(service.c_str(), user.c_str(), &conversation, handle);
}

std::optional<std::string> PamStack::unavailableReason() const {
    const pam_conv silent{
        [](int, const pam_message**, pam_response**, void*) { return PAM_CONV_ERR; }, nullptr};
    pam_handle_t* handle = nullptr;
    const int code = start(service_, user_, silent, &handle);
    if (code != PAM_SUCCESS) {
        // The library reads no handle here, and has none after a failed start.
        return "no PAM service \"" + service_ + "\": " + ::pam_strerror(nullptr, code);
    }
    ::pam_end(handle, PAM_SUCCESS);
    return std::nullopt;
}

bool PamStack::prove(PamConversation& person) const {
    const pam_conv conversation{converse, &person};
    pam_handle_t* handle = nullptr;
    int code = start(service_, user_, conversation, &handle);
    if (code != PAM_SUCCESS) return false;
    code = ::pam_authenticate(handle, PAM_DISALLOW_NULL_AUTHTOK);
    if (code == PAM_SUCCESS) code = ::pam_acct_mgmt(handle, PAM_DISALLOW_NULL_AUTHTOK);
    // A module may have asked for, and authenticated, somebody else.
    const bool proved = code == PAM_SUCCESS && isFor(handle, user_);
    ::pam_end(handle, code);
    return proved;
}

} // namespace kelvo
