// SilentPrompt: the prompt of "/a" and of the command line. It shows nothing
// and answers every message with the safe answer the message itself offers:
// the rightmost visible button that closes the dialog (Cancel, No, or the OK
// of a notice; "&Help" and "&Settings..." are passed over), with the check box
// not ticked. So nothing is overwritten, deleted or restarted without a
// person, and no silencing value is written.
#pragma once

#include "prompts/Prompt.h"

#include <vector>

namespace glyphmoor {

class SilentPrompt final : public Prompt {
public:
    SilentPrompt(System& system, std::string helpFile) : Prompt(system, std::move(helpFile)) {}

    // The texts of the messages answered so far, in order.
    [[nodiscard]] const std::vector<std::string>& Answered() const { return m_answered; }

protected:
    void Show(const PromptRequest& request) override;

private:
    std::vector<std::string> m_answered;
};

// The button SilentPrompt presses for a request; nothing when every visible
// button keeps the dialog open (the dialog then closes without a button).
std::optional<int> SafeAnswer(const PromptRequest& request);

}  // namespace glyphmoor
