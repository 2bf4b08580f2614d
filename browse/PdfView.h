#pragma once

#include <QByteArray>

#include <memory>

class QWidget;

namespace vantoro {

/// Shows PDF documents. It lives in a plug-in, so that the large library behind it is loaded when a document is shown
/// and not at every start. Main thread.
class PdfView {
public:
    enum class State { Shown, Protected, Damaged };

    PdfView() = default;
    PdfView(const PdfView&) = delete;
    PdfView& operator=(const PdfView&) = delete;
    virtual ~PdfView() = default;

    /// Belongs to the parent that it was made for.
    virtual QWidget* widget() = 0;
    virtual State show(const QByteArray& document) = 0;
    virtual int pageCount() const = 0;
    virtual void forget() = 0;
};

/// Null, and a line in the log, when the plug-in is not installed.
std::unique_ptr<PdfView> makePdfView(QWidget* parent);

}
