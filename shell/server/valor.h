#pragma once
// One value of a result set or of a procedure parameter, as the server gives it.
#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <cstdint>
#include <variant>

class Valor {
public:
    Valor() = default; // null
    Valor(int v) : v_(int64_t(v)) {}
    Valor(int64_t v) : v_(v) {}
    Valor(double v) : v_(v) {}
    Valor(const QString& v) : v_(v) {}
    Valor(const char* v) : v_(QString::fromUtf8(v)) {}
    Valor(const QByteArray& v) : v_(v) {}
    Valor(const QDateTime& v) : v_(v) {}

    bool esNulo() const { return std::holds_alternative<std::monostate>(v_); }
    bool esEntero() const { return std::holds_alternative<int64_t>(v_); }
    bool esReal() const { return std::holds_alternative<double>(v_); }
    bool esTexto() const { return std::holds_alternative<QString>(v_); }
    bool esBytes() const { return std::holds_alternative<QByteArray>(v_); }
    bool esFechaHora() const { return std::holds_alternative<QDateTime>(v_); }

    // As text: numbers in the business's form (decimal comma), a date and hour
    // as dd/mm/yyyy hh:mm:ss, null as an empty text.
    QString aTexto() const;
    // As a number: text through the business's conversion; null is a failure.
    double aDouble() const;
    // Picture bytes; a text gives its UTF-8 bytes; null is a failure.
    QByteArray aBytes() const;
    // A date and hour; text in ISO or dd/mm/yyyy form; otherwise a type mismatch.
    QDateTime aFechaHora() const;

    bool operator==(const Valor& otro) const { return v_ == otro.v_; }

private:
    std::variant<std::monostate, int64_t, double, QString, QByteArray, QDateTime> v_;
};
