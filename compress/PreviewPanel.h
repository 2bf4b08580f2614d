#pragma once

#include <QWidget>

#include <functional>

class QLabel;
class QPlainTextEdit;
class QStackedWidget;

namespace vantoro {

class ElidedLabel;
class FlatButton;
class ImageView;

/// The program's one window for a look at a chosen file. Who shows it says what it shows. Main thread.
class PreviewPanel final : public QWidget {
    Q_OBJECT

public:
    /// Made at the first call.
    static PreviewPanel& shared();
    static bool exists();

    /// Answers with the path of the one item; empty: there is nothing to show. Ends with `owner`.
    void setDataSource(QObject* owner, std::function<QString()> path);
    QObject* dataSource() const { return m_owner; }
    /// Hides the panel, or shows it in front.
    void toggle(QWidget* beside);
    void reloadData();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    PreviewPanel();
    void show(const QString& path);

    QObject* m_owner = nullptr;
    std::function<QString()> m_path;
    QString m_shown;
    QStackedWidget* m_pages;
    ImageView* m_picture;
    QPlainTextEdit* m_text;
    QWidget* m_facts;
    ImageView* m_icon;
    QLabel* m_factsText;
    ElidedLabel* m_name;
    FlatButton* m_open;
};

}
