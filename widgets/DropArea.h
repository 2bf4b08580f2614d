#pragma once

#include "widgets/Theme.h"

#include <QVariantAnimation>
#include <QWidget>

class QLabel;
class QMimeData;

namespace vantoro {

class FlatButton;
class ImageView;

/// A generous place to drop files on: an illustration, one sentence, and a button for those who would rather choose.
/// What becomes of the files is the subclass's or the listener's affair.
class DropArea : public QWidget {
    Q_OBJECT

public:
    explicit DropArea(QWidget* parent = nullptr);

    void setAccent(theme::Accent accent);
    void setIllustration(const QIcon& icon);
    void setSentence(const QString& sentence);
    void setHint(const QString& hint);
    FlatButton* button() const { return m_button; }
    bool isHighlighted() const { return m_highlighted; }

    /// The local paths that a drag or the clipboard offers, in its order. Non-local addresses are left out.
    static QStringList localPaths(const QMimeData* data);
    /// Whether localPaths() has a chance to find any; cheap enough for a drag that enters.
    static bool offersFiles(const QMimeData* data);

signals:
    void buttonClicked();

protected:
    /// The files of a drop, at least none. True: taken.
    virtual bool performDrop(const QStringList& paths) = 0;

    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void setHighlighted(bool highlighted);
    void applyType();

    theme::Accent m_accent = theme::Accent::Extract;
    ImageView* m_illustration;
    QLabel* m_sentence;
    QLabel* m_hint;
    FlatButton* m_button;
    bool m_highlighted = false;
    double m_glow = 0;
    QVariantAnimation m_animation;
};

}
