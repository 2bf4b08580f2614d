#include "browse/PasswordGate.h"

#include "browse/OverlayWork.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <utility>

namespace vantoro {
namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(PasswordGate)
};

bool canTell(const XADEntryTable::Row& row)
{
    return row.isEncrypted && (!row.hasSize || (row.size > 0 && row.size <= KXUnarchiveWrapper::previewLimit()));
}

/// On the overlay's thread: it may have to read a whole entry.
bool accepts(KXUnarchiveWrapper& wrapper, const Secret& password)
{
    const bool wasUnlisted = wrapper.needsPasswordToList();
    wrapper.setPassword(password);
    if (wrapper.needsPasswordToList())
        return false;
    if (wasUnlisted) {
        wrapper.listContents();
        return true;
    }
    const auto* item = entryForPasswordCheck(wrapper);
    return item && wrapper.checkPassword(item);
}

}

const KXArchiveItem* entryForPasswordCheck(const KXUnarchiveWrapper& wrapper)
{
    const auto& contents = *wrapper.archiveContents();
    const KXArchiveItem* last = nullptr;
    for (qsizetype i = contents.count() - 1; i >= 0; --i) {
        const auto* item = contents.itemAt(i);
        if (item->isFolder())
            continue;
        if (canTell(contents.table()->at(i)))
            return item;
        if (!last)
            last = item;
    }
    return last;
}

void PasswordGate::reset()
{
    m_state = PasswordCheckState::NotAsked;
    if (m_wrapper)
        m_view.closePWDPanel();
    m_wrapper.reset();
    m_then = {};
}

void PasswordGate::pass(std::shared_ptr<KXUnarchiveWrapper> wrapper, std::function<void()> then)
{
    if (wrapper->crypted() && m_state != PasswordCheckState::Accepted)
        ask(std::move(wrapper), std::move(then));
    else
        then();
}

void PasswordGate::ask(std::shared_ptr<KXUnarchiveWrapper> wrapper, std::function<void()> then)
{
    m_wrapper = std::move(wrapper);
    m_then = std::move(then);
    m_view.showPWDPanel(QFileInfo(m_wrapper->archivePath()).fileName());
}

void PasswordGate::togglePasswordOK(const Secret& password)
{
    if (!m_wrapper)
        return;
    m_wasAnswered = true;
    m_view.closePWDPanel();
    auto isRight = std::make_shared<bool>(false);
    m_work.run({.label = Texts::tr("Checking the password…"),
                .block = [wrapper = m_wrapper, password,
                          isRight](OverlayProgress&) { *isRight = accepts(*wrapper, password); },
                .cancel = [wrapper = m_wrapper] { wrapper->stop(); },
                .finished = [this, isRight] { passwordChecked(*isRight); }});
}

void PasswordGate::passwordChecked(bool isRight)
{
    if (!isRight) {
        m_wrapper->setPassword(std::nullopt);
        m_view.showNotice(Notice::WrongPassword);
    }
    settle(isRight ? PasswordCheckState::Accepted : PasswordCheckState::Rejected);
}

void PasswordGate::togglePasswordCancel()
{
    if (!m_wrapper)
        return;
    m_wasAnswered = false;
    m_view.closePWDPanel();
    settle(PasswordCheckState::Rejected);
}

void PasswordGate::settle(PasswordCheckState state)
{
    m_state = state;
    m_wrapper.reset();
    if (const auto then = std::exchange(m_then, {}))
        then();
}

}
