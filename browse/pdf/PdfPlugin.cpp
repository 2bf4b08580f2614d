// The plug-in behind browse/PdfView.h.
#include "browse/PdfView.h"

#include <QBuffer>
#include <QPdfDocument>
#include <QPdfView>
#include <QPointer>

namespace vantoro {
namespace {

class QtPdfView final : public PdfView {
public:
    explicit QtPdfView(QWidget* parent) : m_view(new QPdfView(parent)), m_document(new QPdfDocument(m_view))
    {
        m_view->setPageMode(QPdfView::PageMode::MultiPage);
        m_view->setZoomMode(QPdfView::ZoomMode::FitToWidth);
        m_view->setFrameShape(QFrame::NoFrame);
        m_view->setDocument(m_document);
    }
    ~QtPdfView() override
    {
        if (m_view)
            m_document->close(); // it reads from the buffer until then
    }

    QWidget* widget() override { return m_view; }

    State show(const QByteArray& document) override
    {
        m_data.setData(document);
        m_data.open(QIODevice::ReadOnly);
        m_document->load(&m_data);
        switch (m_document->error()) {
        case QPdfDocument::Error::None:
            return State::Shown;
        case QPdfDocument::Error::IncorrectPassword:
            return State::Protected;
        default:
            return State::Damaged;
        }
    }

    int pageCount() const override { return m_document->pageCount(); }

    void forget() override
    {
        m_document->close();
        m_data.close();
        m_data.setData({});
    }

private:
    QPointer<QPdfView> m_view;
    QPdfDocument* m_document;
    QBuffer m_data;
};

}
}

extern "C" Q_DECL_EXPORT vantoro::PdfView* VANTORO_PDF_MAKER(QWidget* parent) { return new vantoro::QtPdfView(parent); }
