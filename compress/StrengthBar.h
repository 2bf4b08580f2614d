#pragma once

#include "compress/PasswordStrength.h"

#include <QWidget>

class QLabel;

namespace vantoro {

/// Four short bars that fill up as a password grows stronger, and a word for it.
class StrengthBar final : public QWidget {
    Q_OBJECT

public:
    explicit StrengthBar(QWidget* parent = nullptr);

    void setPassword(const QString& password);
    PasswordStrength strength() const { return m_strength; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor color() const;

    PasswordStrength m_strength = PasswordStrength::None;
    QLabel* m_word;
};

}
