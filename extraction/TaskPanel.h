#pragma once

#include <QIcon>
#include <QWidget>

class QLabel;
class QVBoxLayout;

namespace vantoro {

class FlatButton;

/// What all panels of a row share: the archive's icon (with a mark on it where something is asked or went wrong), a
/// column of content, and room for a round button at the end.
class TaskPanel : public QWidget {
    Q_OBJECT

public:
    enum class Mark { None, Password, Encoding, Warning, Error };

    TaskPanel(Mark mark, QWidget* parent);

    void setIcon(const QIcon& icon);
    int heightAtWidth(int width) const;
    /// Not lower than this, whatever the content needs.
    void setLeastHeight(int height);

    /// Where the keyboard goes when the panel asks something; null: nowhere.
    virtual QWidget* focusTarget() const { return nullptr; }
    /// Tells assistive technology that the panel has come and what it says.
    void announce();

protected:
    QVBoxLayout* column() const { return m_column; }
    /// A wrapping label in the column, in which nothing is markup.
    QLabel* addMessage();
    FlatButton* addRoundButton(const QString& glyph, const QString& name);

private:
    class IconWell;

    IconWell* m_icon;
    QVBoxLayout* m_column;
    int m_leastHeight = 0;
};

}
