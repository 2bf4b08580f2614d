#include "extraction/KXArchiveTaskView.h"

#include "extraction/QuestionPanels.h"
#include "extraction/StatusPanels.h"
#include "platform/Workspace.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FlatButton.h"
#include "widgets/Icons.h"
#include "widgets/PasswordField.h"

#include <QApplication>
#include <QFileInfo>
#include <QScrollArea>

namespace vantoro {
namespace {

constexpr int kUpdateMs = 34; // at most 30 updates of the display a second

Secret secretFrom(const QString& text)
{
    QByteArray utf8 = text.toUtf8();
    Secret secret(std::string_view(utf8.constData(), static_cast<std::size_t>(utf8.size())));
    wipe(utf8.data(), static_cast<std::size_t>(utf8.size()));
    return secret;
}

}

KXArchiveTaskView::KXArchiveTaskView(QWidget* parent) : KXMultipleTasksView(parent)
{
    m_updateTimer.setSingleShot(true);
    connect(&m_updateTimer, &QTimer::timeout, this, &KXArchiveTaskView::applyUpdate);
}

KXArchiveTaskView::~KXArchiveTaskView() { closeQuestions(); }

void KXArchiveTaskView::setArchiveController(KXArchiveManageController* archive)
{
    m_archive = archive;
    m_filename = archive ? archive->filename() : QString();
    setAccessibleName(archiveName());
}

QString KXArchiveTaskView::archiveName() const { return QFileInfo(m_filename).fileName(); }

QIcon KXArchiveTaskView::archiveIcon() const
{
    const QIcon icon = Workspace::shared().iconForFile(m_filename);
    return icon.isNull() ? icons::forArchive(m_filename) : icon;
}

void KXArchiveTaskView::deleteWhenUnused()
{
    closeQuestions();
    if (m_archive)
        connect(m_archive, &QObject::destroyed, this, &QObject::deleteLater);
    else
        deleteLater();
}

// Cancelling

void KXArchiveTaskView::setCancelAction(Action<TaskViewPort*> action)
{
    m_cancelAction = std::move(action);
    if (m_cancelAction && m_waitview)
        m_waitview->cancelButton()->setEnabled(true); // pressed while nobody listened: it may be pressed again
}

void KXArchiveTaskView::cancelPressed(WaitPanel* wait, ProgressPanel* progress)
{
    if (wait)
        wait->cancelButton()->setEnabled(false);
    if (progress) {
        progress->cancelButton()->setEnabled(false);
        progress->setStopping();
    }
    const auto action = m_cancelAction; // the receiver may set another
    action(this);
}

// Panels that tell

void KXArchiveTaskView::setupWaitView()
{
    if (!m_waitview) {
        m_waitview = new WaitPanel(this);
        connect(m_waitview->cancelButton(), &FlatButton::clicked, this, [this] { cancelPressed(m_waitview, nullptr); });
    }
    updateWaitView();
    m_waitview->setIcon(archiveIcon());
    showPanel(m_waitview);
}

void KXArchiveTaskView::updateWaitView()
{
    if (!m_waitview || !m_archive)
        return;
    m_filename = m_archive->filename();
    const qsizetype files = m_archive->allFilenames().size();
    const QString name = isolated(archiveName());
    m_waitview->setText(files > 1 ? tr("%1 (+%2 more)").arg(name).arg(files - 1) : name);
}

ProgressPanel* KXArchiveTaskView::progressView()
{
    if (!m_progressview) {
        m_progressview = new ProgressPanel(this);
        connect(m_progressview->cancelButton(), &FlatButton::clicked, this,
                [this] { cancelPressed(nullptr, m_progressview); });
    }
    return m_progressview;
}

void KXArchiveTaskView::setupProgressViewInPreparingMode()
{
    if (m_archive)
        m_filename = m_archive->filename();
    ProgressPanel* panel = progressView();
    panel->setAction(tr("Preparing to extract \"%1\"").arg(isolated(archiveName())));
    panel->setName(QString());
    panel->setPreparing(true);
    panel->setIcon(archiveIcon());
    showPanel(panel);
}

void KXArchiveTaskView::showPanel(TaskPanel* panel) { setDisplayedView(panel); }

void KXArchiveTaskView::showProgressAgain()
{
    progressView()->resumeClock();
    showPanel(progressView());
}

// Panels that ask

void KXArchiveTaskView::showQuestion(QuestionPanel* panel)
{
    panel->setIcon(archiveIcon());
    showPanel(panel);
    drawAttention(panel);
}

void KXArchiveTaskView::drawAttention(TaskPanel* panel)
{
    QWidget* top = window();
    if (top->isMinimized())
        top->showNormal();
    else
        top->show();
    top->raise();
    top->activateWindow();
    QApplication::alert(top);
    for (QWidget* ancestor = parentWidget(); ancestor; ancestor = ancestor->parentWidget()) {
        if (auto* scroll = qobject_cast<QScrollArea*>(ancestor))
            scroll->ensureWidgetVisible(this, 0, 0);
    }
    if (QWidget* target = panel->focusTarget())
        target->setFocus(Qt::OtherFocusReason);
    panel->announce();
}

QuestionPanel* KXArchiveTaskView::makeQuestion(TaskPanel::Mark mark)
{
    auto* panel = new QuestionPanel(mark, this);
    connect(panel, &QuestionPanel::answered, this, &KXArchiveTaskView::provideResponseFromUI);
    return panel;
}

void KXArchiveTaskView::displayNotWritableErrorWithResponseAction(Action<TaskViewPort*, int> action)
{
    if (!m_notwritableview) {
        m_notwritableview = makeQuestion(TaskPanel::Mark::Warning);
        m_notwritableview->addAnswer(tr("Stop"), 0, false);
        m_notwritableview->addAnswer(tr("Extract to Desktop"), 1, false);
        m_notwritableview->addAnswer(tr("Choose Folder…"), 2, true);
    }
    const QString folder = m_archive ? m_archive->destination() : QString();
    m_notwritableview->setMessage(tr("You may not write to the folder \"%1\". Where should \"%2\" be extracted to?")
                                      .arg(isolated(folder), isolated(archiveName())));
    setUIResponseAction(std::move(action));
    showQuestion(m_notwritableview);
}

void KXArchiveTaskView::setupErrorView(const QString& message)
{
    if (!m_errorview) {
        m_errorview = makeQuestion(TaskPanel::Mark::Warning);
        m_errorview->addAnswer(tr("Stop"), 0, false);
        m_errorview->addAnswer(tr("Continue"), 1, true);
    }
    m_errorview->setMessage(message);
    showQuestion(m_errorview);
}

void KXArchiveTaskView::setupOpenErrorView(const QString& message)
{
    if (!m_openerrorview) {
        m_openerrorview = makeQuestion(TaskPanel::Mark::Error);
        m_openerrorview->addAnswer(tr("OK"), 0, true);
    }
    m_openerrorview->setHeading(archiveName()); // the message does not name it
    m_openerrorview->setMessage(message);
    showQuestion(m_openerrorview);
}

void KXArchiveTaskView::setupPasswordView(unsigned attempt)
{
    if (!m_passwordview) {
        m_passwordview = new PasswordPanel(this);
        connect(m_passwordview, &QuestionPanel::answered, this, &KXArchiveTaskView::provideResponseFromUI);
    }
    m_passwordview->prepare(archiveName(), attempt > 0, m_archive && m_archive->caresAboutPasswordEncoding());
    showQuestion(m_passwordview);
}

void KXArchiveTaskView::setupEncodingViewForXADString(const XADString& string)
{
    if (!m_encodingview) {
        m_encodingview = new EncodingPanel(this);
        connect(m_encodingview, &QuestionPanel::answered, this, &KXArchiveTaskView::provideResponseFromUI);
    }
    m_encodingview->prepare(archiveName(), string);
    showQuestion(m_encodingview);
}

// The hand-back between the job's thread and the main thread

void KXArchiveTaskView::performOnMainThread(std::function<void()> work)
{
    QMetaObject::invokeMethod(this, std::move(work), Qt::QueuedConnection);
}

KXArchiveTaskView::Response KXArchiveTaskView::waitForResponseFromUI(std::function<void()> setup)
{
    m_pauselock.ask();
    performOnMainThread([this, setup = std::move(setup)] {
        m_responseAction = {}; // this asker is parked: the answer is for it
        m_isAsking = true;
        setup();
    });
    return m_pauselock.wait();
}

void KXArchiveTaskView::provideResponseFromUI(int response)
{
    if (m_responseAction) {
        const auto action = m_responseAction;
        action(this, response);
        return;
    }
    if (!std::exchange(m_isAsking, false))
        return; // a second click must not answer a question that is not shown yet
    Response answer{.number = response};
    if (m_passwordview && displayedView() == m_passwordview) {
        if (response == 1)
            answer.password = secretFrom(m_passwordview->field()->text());
        m_passwordview->field()->wipe();
    }
    if (m_encodingview && displayedView() == m_encodingview && response == 1)
        answer.encoding = m_encodingview->selectedTag();
    m_pauselock.give(std::move(answer));
}

void KXArchiveTaskView::closeQuestions() { m_pauselock.close({}); }

bool KXArchiveTaskView::displayError(const QString& message, bool*)
{
    const auto answer = waitForResponseFromUI([this, message] { setupErrorView(message); });
    performOnMainThread([this] { showProgressAgain(); });
    return answer.number == 1;
}

void KXArchiveTaskView::displayOpenError(const QString& message)
{
    waitForResponseFromUI([this, message] { setupOpenErrorView(message); });
}

Secret KXArchiveTaskView::displayPasswordInputWithApplyToAllPointer(bool*, CharsetId*, unsigned attempt)
{
    auto answer = waitForResponseFromUI([this, attempt] { setupPasswordView(attempt); });
    performOnMainThread([this] { showProgressAgain(); });
    return answer.password;
}

CharsetId KXArchiveTaskView::displayEncodingSelectorForXADString(const XADString& string)
{
    const auto answer = waitForResponseFromUI([this, string] { setupEncodingViewForXADString(string); });
    performOnMainThread([this] { showProgressAgain(); });
    return answer.encoding;
}

// Progress

void KXArchiveTaskView::setName(const QString& name)
{
    {
        const std::scoped_lock lock(m_pendingMutex);
        m_pending.name = name;
    }
    postUpdate();
}

void KXArchiveTaskView::setProgress(double fraction)
{
    {
        const std::scoped_lock lock(m_pendingMutex);
        m_pending.fraction = fraction;
    }
    postUpdate();
}

void KXArchiveTaskView::setProgressDetail(const XADProgress& progress)
{
    {
        const std::scoped_lock lock(m_pendingMutex);
        m_pending.detail = progress;
    }
    postUpdate();
}

void KXArchiveTaskView::postUpdate()
{
    if (m_updatePosted.exchange(true))
        return; // the one under way will show this, too
    performOnMainThread([this] {
        const qint64 since = m_lastUpdate.isValid() ? m_lastUpdate.elapsed() : kUpdateMs;
        m_updateTimer.start(static_cast<int>(qBound(qint64(0), kUpdateMs - since, qint64(kUpdateMs))));
    });
}

void KXArchiveTaskView::applyUpdate()
{
    m_lastUpdate.start();
    m_updatePosted = false;
    Pending pending;
    {
        const std::scoped_lock lock(m_pendingMutex);
        pending = std::exchange(m_pending, {});
    }
    if (!m_progressview)
        return;
    if (pending.name)
        m_progressview->setName(*pending.name);
    if (pending.fraction)
        applyProgress(*pending.fraction);
    if (pending.detail)
        m_progressview->setDetail(*pending.detail);
}

void KXArchiveTaskView::applyProgress(double fraction)
{
    if (m_progressview->isPreparing()) {
        m_progressview->setAction(tr("Extracting \"%1\"").arg(isolated(archiveName())));
        m_progressview->setPreparing(false);
    }
    m_progressview->setFraction(fraction);
}

}
