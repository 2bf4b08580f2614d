#pragma once

#include "browse/KXUnarchiveWrapper.h"

#include <functional>

namespace vantoro {

class BrowserView;
class OverlayWork;

enum class PasswordCheckState {
    Rejected = 0, ///< or the prompt was cancelled
    Accepted = 1,
    NotAsked = 2,
};

/// Asks for the password of the archive that the page shows, when something first needs it. Main thread.
class PasswordGate {
public:
    PasswordGate(BrowserView& view, OverlayWork& work) : m_view(view), m_work(work) {}

    PasswordCheckState passwordCheckState() const { return m_state; }
    /// Whether the last prompt got a password, right or wrong; false once it was cancelled.
    bool wasAnswered() const { return m_wasAnswered; }
    /// Another archive; a prompt that is open goes.
    void reset();

    /// Calls `then` once the state is settled: at once unless the archive is encrypted and no password was accepted.
    void pass(std::shared_ptr<KXUnarchiveWrapper> wrapper, std::function<void()> then);
    /// Asks whether or not an entry needs it, as for a list of names that is itself encrypted.
    void ask(std::shared_ptr<KXUnarchiveWrapper> wrapper, std::function<void()> then);

    void togglePasswordOK(const Secret& password);
    void togglePasswordCancel();

private:
    void passwordChecked(bool isRight);
    void settle(PasswordCheckState state);

    BrowserView& m_view;
    OverlayWork& m_work;
    PasswordCheckState m_state = PasswordCheckState::NotAsked;
    bool m_wasAnswered = false;
    std::shared_ptr<KXUnarchiveWrapper> m_wrapper; // while the prompt is open or the answer is being checked
    std::function<void()> m_then;
};

/// The entry by which a password is judged: the last one that can tell, for an empty or unencrypted one cannot. Null
/// when the archive has no files.
const KXArchiveItem* entryForPasswordCheck(const KXUnarchiveWrapper& wrapper);

}
