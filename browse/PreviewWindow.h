#pragma once

#include <QWidget>

#include <memory>

class QMovie;
class QPlainTextEdit;
class QStackedWidget;

namespace vantoro {

class ElidedLabel;
class FlatButton;
class ImageView;
class PdfView;
struct PreviewContent;

/// The preview, docked at the right edge of the main window, whose moves it follows. It is made once and shown and
/// hidden.
class PreviewWindow final : public QWidget {
    Q_OBJECT

public:
    /// `page` is the browser's page; its window is the one to dock at.
    explicit PreviewWindow(QWidget* page);
    ~PreviewWindow() override;

    /// Takes the keyboard when it appears; what is shown later leaves the keyboard where it is.
    void showContent(const PreviewContent& content, const QIcon& icon);
    /// Forgets the content, too.
    void dismiss();

signals:
    void extractRequested();
    void dismissed();
    /// The entry above or below is wanted.
    void stepRequested(bool isDown);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildTitle();
    void buildViews();
    void showPdf(const PreviewContent& content, const QIcon& icon);
    void showIcon(const QIcon& icon);
    void showImage(const PreviewContent& content);
    void forgetContent();
    void initQuicklookWindow();

    QWidget* m_page;
    QWidget* m_docked = nullptr; // the window that is followed
    ElidedLabel* m_titleBarLabel;
    FlatButton* m_close;
    FlatButton* m_btnSingleExtract;
    QStackedWidget* m_views;
    ImageView* m_qtImageView;
    std::unique_ptr<QMovie> m_movie; // of a picture that moves
    QPlainTextEdit* m_qtTextView;
    std::unique_ptr<PdfView> m_qtPdfView; // made for the first document
    ElidedLabel* m_detail;
};

}
