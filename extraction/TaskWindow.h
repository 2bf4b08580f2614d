#pragma once

#include <QWidget>

class QLabel;
class QScrollArea;

namespace vantoro {

class KXEncodePopButton;
class KXTaskListsView;

/// The window of the task list: the rows, scrolled once they are too many for the screen, and below them the choice of
/// the encoding for file names.
class TaskWindow : public QWidget {
    Q_OBJECT

public:
    explicit TaskWindow(QWidget* parent = nullptr);

    KXTaskListsView* taskListsView() const { return m_list; }
    KXEncodePopButton* encodePopButton() const { return m_btnEncodePopButton; }

    /// Takes the list's height where the screen has it; keeps the top edge in place. Nothing for an empty list.
    void fitToList();
    void bringToFront();
    /// Closed when it is minimised, hidden otherwise.
    void orderOut();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    KXTaskListsView* m_list;
    QScrollArea* m_scroll;
    QWidget* m_footer;
    QLabel* m_count;
    KXEncodePopButton* m_btnEncodePopButton;
};

}
