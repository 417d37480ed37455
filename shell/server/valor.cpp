#include "valor.h"
#include "fallo.h"
#include "numeros.h"

QString Valor::aTexto() const
{
    if (esNulo())
        return {};
    if (auto p = std::get_if<int64_t>(&v_))
        return QString::number(*p);
    if (auto p = std::get_if<double>(&v_))
        return Numeros::Str(*p);
    if (auto p = std::get_if<QString>(&v_))
        return *p;
    if (auto p = std::get_if<QByteArray>(&v_))
        return QString::fromUtf8(*p);
    return std::get<QDateTime>(v_).toString(QStringLiteral("dd/MM/yyyy HH:mm:ss"));
}

double Valor::aDouble() const
{
    if (esNulo())
        throw FalloEjecucion::usoDeNulo();
    if (auto p = std::get_if<int64_t>(&v_))
        return double(*p);
    if (auto p = std::get_if<double>(&v_))
        return *p;
    if (auto p = std::get_if<QString>(&v_))
        return Numeros::CDbl(*p);
    throw FalloEjecucion::tiposNoCoinciden();
}

QByteArray Valor::aBytes() const
{
    if (esNulo())
        throw FalloEjecucion::usoDeNulo();
    if (auto p = std::get_if<QByteArray>(&v_))
        return *p;
    if (auto p = std::get_if<QString>(&v_))
        return p->toUtf8();
    throw FalloEjecucion::tiposNoCoinciden();
}

QDateTime Valor::aFechaHora() const
{
    if (esNulo())
        throw FalloEjecucion::usoDeNulo();
    if (auto p = std::get_if<QDateTime>(&v_))
        return *p;
    if (auto p = std::get_if<QString>(&v_)) {
        const QString t = p->trimmed();
        for (const char* formato : {"yyyy-MM-dd HH:mm:ss.zzz", "yyyy-MM-dd HH:mm:ss", "yyyy-MM-ddTHH:mm:ss.zzz",
                                    "yyyy-MM-ddTHH:mm:ss", "dd/MM/yyyy HH:mm:ss", "yyyy-MM-dd", "dd/MM/yyyy"}) {
            const QDateTime d = QDateTime::fromString(t, QString::fromLatin1(formato));
            if (d.isValid())
                return d;
        }
    }
    throw FalloEjecucion::tiposNoCoinciden();
}
