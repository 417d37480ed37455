#include "exportar.h"
#include "celdas.h"

#include <QDate>
#include <QFileInfo>
#include <QHash>
#include <QHeaderView>
#include <QLabel>
#include <QTableView>

#include <xlsxwriter.h>

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <optional>
#include <set>

namespace Exportar {

namespace {

// A screen's pixel is 15 twips; a character of the sheet's letter, some 7 pixels.
constexpr double kPixelesPorCaracter = 7.0;

// ---- what a shown text is

// A number in the business's form: an optional "-", the integer digits in
// groups of three after "." or all together, an optional "," with decimals.
// An integer part of several digits starting with 0 is a code, no number.
struct NumeroVisto {
    double valor = 0;
    int decimales = 0;
    bool agrupado = false;
};

std::optional<NumeroVisto> numeroVisto(QStringView t)
{
    NumeroVisto n;
    char limpio[64];
    int largo = 0;
    qsizetype i = 0;
    const qsizetype fin = t.size();
    if (fin == 0 || fin > 40)
        return std::nullopt;
    if (t[0] == u'-')
        limpio[largo++] = '-', ++i;
    int enteros = 0, enGrupo = 0;
    for (; i < fin && t[i] != u','; ++i) {
        const char16_t c = t[i].unicode();
        if (c == u'.') {
            // A mark after one to three digits, then after exactly three.
            if (enGrupo == 0 || enGrupo > 3 || (n.agrupado && enGrupo != 3))
                return std::nullopt;
            n.agrupado = true;
            enGrupo = 0;
        } else if (c >= u'0' && c <= u'9') {
            limpio[largo++] = char(c);
            ++enteros;
            ++enGrupo;
        } else {
            return std::nullopt;
        }
    }
    if (n.agrupado && enGrupo != 3)
        return std::nullopt;
    if (enteros > 1 && limpio[largo - enteros] == '0')
        return std::nullopt;
    if (i < fin) { // the decimals
        limpio[largo++] = '.';
        for (++i; i < fin; ++i) {
            const char16_t c = t[i].unicode();
            if (c < u'0' || c > u'9')
                return std::nullopt;
            limpio[largo++] = char(c);
            ++n.decimales;
        }
        if (n.decimales == 0)
            return std::nullopt;
    }
    if (enteros + n.decimales == 0)
        return std::nullopt;
    const auto r = std::from_chars(limpio, limpio + largo, n.valor);
    if (r.ec != std::errc() || r.ptr != limpio + largo)
        return std::nullopt;
    return n;
}

// A date as the screens show it: dd/mm/yyyy.
std::optional<QDate> fechaVista(QStringView t)
{
    if (t.size() != 10 || t[2] != u'/' || t[5] != u'/')
        return std::nullopt;
    int partes[3] = {0, 0, 0};
    for (int i = 0, parte = 0; i < 10; ++i) {
        const char16_t c = t[i].unicode();
        if (i == 2 || i == 5) {
            ++parte;
        } else if (c >= u'0' && c <= u'9') {
            partes[parte] = partes[parte] * 10 + (c - u'0');
        } else {
            return std::nullopt;
        }
    }
    const QDate d(partes[2], partes[1], partes[0]);
    return d.isValid() ? std::optional<QDate>(d) : std::nullopt;
}

// A pattern of zeros alone ("0000") writes a code, not an amount.
bool esCodigo(const FormatoNumero& p)
{
    const QString& t = p.patron();
    return t.size() > 1 && t.count(QLatin1Char('0')) == t.size();
}

// The pattern as the workbook writes it: digit places, grouping, decimal
// point, escapes and quoted texts mean the same there; any other character
// is escaped so that it stays a character ("%" would scale the number).
QString formatoDelLibro(const FormatoNumero& p)
{
    const QString& t = p.patron();
    QString r;
    for (qsizetype i = 0; i < t.size(); ++i) {
        const QChar c = t[i];
        if (QStringView(u"0#,. -$()+:/").contains(c)) {
            r += c;
        } else if (c == u'\\' && i + 1 < t.size()) {
            r += c;
            r += t[++i];
        } else if (c == u'"') {
            const qsizetype cierre = t.indexOf(QLatin1Char('"'), i + 1);
            const qsizetype hasta = cierre < 0 ? t.size() : cierre + 1;
            r += t.mid(i, hasta - i);
            if (cierre < 0)
                r += QLatin1Char('"');
            i = hasta - 1;
        } else {
            r += QLatin1Char('\\');
            r += c;
        }
    }
    return r;
}

// The format of a number read from its text: grouped if it shows marks,
// with the decimals it shows.
QString formatoDeducido(bool agrupado, int decimales)
{
    QString r = agrupado ? QStringLiteral("#,##0") : QStringLiteral("0");
    if (decimales > 0)
        r += QLatin1Char('.') + QString(decimales, QLatin1Char('0'));
    return r;
}

// ---- a grid as it is exported

// One cell, or one footer, as the file takes it.
struct Dato {
    enum class Tipo { Vacio, Texto, Numero, Fecha } tipo = Tipo::Vacio;
    QString texto; // as shown; for a number or a date, only when asked for
    double numero = 0;
    QDate fecha;
    const FormatoNumero* patron = nullptr; // a number of an amount, in its pattern
    int decimales = -1;                    // a number read from its text; -1: as it comes
    bool agrupado = false;
};

Dato deTexto(QString texto, bool derecha)
{
    Dato d;
    if (texto.isEmpty())
        return d;
    d.tipo = Dato::Tipo::Texto;
    const QStringView limpio = QStringView(texto).trimmed();
    if (const auto f = fechaVista(limpio)) {
        d.tipo = Dato::Tipo::Fecha;
        d.fecha = *f;
    } else if (derecha) {
        if (const auto n = numeroVisto(limpio)) {
            d.tipo = Dato::Tipo::Numero;
            d.numero = n->valor;
            d.decimales = n->decimales;
            d.agrupado = n->agrupado;
        }
    }
    d.texto = std::move(texto);
    return d;
}

// Reads a grid as the operator sees it: the columns shown, the rows bound.
class Lectura {
public:
    explicit Lectura(const Rejilla& r) : r_(r), columnas_(r.columnasVistas())
    {
        const Celdas* c = r.array();
        primera_ = c ? std::max(c->LowerBound(1), 0) : 0;
        filas_ = c ? r.modelo()->rowCount() : 0;
        derecha_.assign(columnas_.size(), -1);
    }

    const std::vector<int>& columnas() const { return columnas_; }
    int filas() const { return filas_; }
    bool conPies() const { return r_.ColumnFooters(); }

    QString titulo(size_t i) const { return r_.tituloEnUnaLinea(columnas_[i]); }
    double ancho(size_t i) const { return r_.vista()->horizontalHeader()->sectionSize(columnas_[i]) / kPixelesPorCaracter; }

    Dato celda(int fila, size_t i, bool conTexto)
    {
        const Celdas* m = r_.array();
        const int col = columnas_[i];
        if (!m || !m->dentro(primera_ + fila, col))
            return {};
        const Celda& c = m->Value(primera_ + fila, col);
        const Celda::Importe importe = c.importe();
        if ((importe.patron && !importe.patron->esDeTexto() && !esCodigo(*importe.patron)) || c.esNumero() || c.esLogico()) {
            Dato d;
            d.tipo = Dato::Tipo::Numero;
            d.numero = importe.patron ? importe.valor : c.numero();
            d.patron = importe.patron;
            if (conTexto)
                d.texto = c.texto();
            return d;
        }
        QString texto = c.texto();
        // Only a text that could be a number asks for its alignment.
        const bool numerico = !texto.isEmpty() && numeroVisto(QStringView(texto).trimmed()).has_value();
        return deTexto(std::move(texto), numerico && derecha(fila, i));
    }

    // A footer: a total when it reads as a number.
    Dato pie(size_t i) const
    {
        const QLabel* l = r_.pie(columnas_[i]);
        return deTexto(l ? l->text() : QString(), true);
    }

private:
    // Whether the texts of a column stand to the right; the same for all of them.
    bool derecha(int fila, size_t i)
    {
        if (derecha_[i] < 0) {
            const QVariant a = r_.modelo()->data(r_.modelo()->index(fila, columnas_[i]), Qt::TextAlignmentRole);
            derecha_[i] = (a.value<Qt::Alignment>() & Qt::AlignRight) ? 1 : 0;
        }
        return derecha_[i] == 1;
    }

    const Rejilla& r_;
    std::vector<int> columnas_;
    std::vector<int8_t> derecha_;
    int primera_ = 0;
    int filas_ = 0;
};

// ---- failures

QString razonDelSistema(int error)
{
    switch (error) {
    case EACCES:
    case EPERM:
        return QStringLiteral("no hay permiso para escribir en esa carpeta");
    case ENOENT:
    case ENOTDIR:
        return QStringLiteral("la carpeta no existe");
    case ENOSPC:
    case EDQUOT:
        return QStringLiteral("el disco está lleno");
    case EROFS:
        return QStringLiteral("el disco es de solo lectura");
    case EISDIR:
        return QStringLiteral("ese nombre es de una carpeta");
    default:
        return QStringLiteral("el sistema no permitió escribirlo (error %1)").arg(error);
    }
}

// The file opened for writing, or the reason it cannot be.
FILE* abrir(const QString& archivo, QString& razon)
{
    errno = 0;
    FILE* f = std::fopen(QFile::encodeName(archivo).constData(), "wb");
    if (!f)
        razon = razonDelSistema(errno);
    return f;
}

// ---- the workbook

// The cell formats of a workbook, each made once.
class Formatos {
public:
    explicit Formatos(lxw_workbook* libro) : libro_(libro) {}

    lxw_format* de(const Dato& d, bool negrita)
    {
        const int n = negrita ? 1 : 0;
        switch (d.tipo) {
        case Dato::Tipo::Fecha:
            return hecho(porTexto_[n], QStringLiteral("dd/mm/yyyy"), negrita);
        case Dato::Tipo::Numero:
            if (d.patron) {
                lxw_format*& f = porPatron_[n][d.patron];
                if (!f)
                    f = nuevo(formatoDelLibro(*d.patron), negrita);
                return f;
            }
            if (d.decimales >= 0) {
                lxw_format*& f = deducidos_[n][d.decimales * 2 + (d.agrupado ? 1 : 0)];
                if (!f)
                    f = nuevo(formatoDeducido(d.agrupado, d.decimales), negrita);
                return f;
            }
            [[fallthrough]];
        default:
            return negrita ? hecho(porTexto_[n], QString(), true) : nullptr;
        }
    }

private:
    lxw_format* hecho(QHash<QString, lxw_format*>& hechos, const QString& formato, bool negrita)
    {
        lxw_format*& f = hechos[formato];
        if (!f)
            f = nuevo(formato, negrita);
        return f;
    }
    lxw_format* nuevo(const QString& formato, bool negrita)
    {
        lxw_format* f = workbook_add_format(libro_);
        if (!formato.isEmpty())
            format_set_num_format(f, formato.toUtf8().constData());
        if (negrita)
            format_set_bold(f);
        return f;
    }

    lxw_workbook* libro_;
    QHash<QString, lxw_format*> porTexto_[2];
    QHash<const FormatoNumero*, lxw_format*> porPatron_[2];
    QHash<int, lxw_format*> deducidos_[2];
};

void escribirCelda(lxw_worksheet* hoja, lxw_row_t fila, lxw_col_t col, const Dato& d, lxw_format* formato)
{
    switch (d.tipo) {
    case Dato::Tipo::Vacio:
        if (formato)
            worksheet_write_blank(hoja, fila, col, formato);
        return;
    case Dato::Tipo::Texto:
        worksheet_write_string(hoja, fila, col, d.texto.toUtf8().constData(), formato);
        return;
    case Dato::Tipo::Numero:
        worksheet_write_number(hoja, fila, col, d.numero, formato);
        return;
    case Dato::Tipo::Fecha: {
        lxw_datetime f {d.fecha.year(), d.fecha.month(), d.fecha.day(), 0, 0, 0};
        worksheet_write_datetime(hoja, fila, col, &f, formato);
        return;
    }
    }
}

// A sheet: the captions, the rows, the footers, in bold the first and the last line.
void escribirHoja(lxw_worksheet* hoja, Lectura& l, Formatos& formatos)
{
    const size_t n = l.columnas().size();
    for (size_t i = 0; i < n; ++i)
        worksheet_set_column(hoja, lxw_col_t(i), lxw_col_t(i), l.ancho(i), nullptr);
    worksheet_freeze_panes(hoja, 1, 0);
    lxw_format* negrita = formatos.de(Dato {}, true);
    for (size_t i = 0; i < n; ++i)
        worksheet_write_string(hoja, 0, lxw_col_t(i), l.titulo(i).toUtf8().constData(), negrita);
    lxw_row_t fila = 1;
    for (int f = 0; f < l.filas(); ++f, ++fila)
        for (size_t i = 0; i < n; ++i) {
            const Dato d = l.celda(f, i, false);
            escribirCelda(hoja, fila, lxw_col_t(i), d, formatos.de(d, false));
        }
    if (l.conPies())
        for (size_t i = 0; i < n; ++i) {
            const Dato d = l.pie(i);
            escribirCelda(hoja, fila, lxw_col_t(i), d, formatos.de(d, true));
        }
}

QString razonDelLibro(lxw_error error, int sistema)
{
    if (error == LXW_ERROR_CREATING_TMPFILE || error == LXW_ERROR_READING_TMPFILE)
        return QStringLiteral("no se pudo usar un archivo temporal");
    if (sistema != 0)
        return razonDelSistema(sistema);
    return QStringLiteral("no se pudo terminar el libro (%1)").arg(QString::fromUtf8(lxw_strerror(error)));
}

// ---- the text separated by semicolons

void agregarCampo(QByteArray& salida, const QString& texto)
{
    if (texto.contains(QLatin1Char(';')) || texto.contains(QLatin1Char('"')) || texto.contains(QLatin1Char('\n')) ||
        texto.contains(QLatin1Char('\r'))) {
        QString citado = texto;
        citado.replace(QLatin1Char('"'), QLatin1String("\"\""));
        salida += '"';
        salida += citado.toUtf8();
        salida += '"';
    } else {
        salida += texto.toUtf8();
    }
}

// A number with its decimal comma and without thousands marks; any other
// datum as shown.
QString textoDelCampo(const Dato& d)
{
    if (d.tipo == Dato::Tipo::Numero && numeroVisto(QStringView(d.texto).trimmed()))
        return QString(d.texto).remove(QLatin1Char('.')).trimmed();
    return d.texto;
}

} // namespace

std::vector<QString> Nombres_De_Hojas(const std::vector<QString>& nombres)
{
    std::vector<QString> r;
    std::set<QString> usados; // in upper case: a workbook tells no case apart
    for (const QString& nombre : nombres) {
        QString limpio;
        for (const QChar c : nombre)
            limpio += QStringView(u"[]:*?/\\").contains(c) || c.category() == QChar::Other_Control ? QChar(u'-') : c;
        limpio = limpio.trimmed();
        while (limpio.startsWith(QLatin1Char('\'')))
            limpio.remove(0, 1);
        while (limpio.endsWith(QLatin1Char('\'')))
            limpio.chop(1);
        if (limpio.isEmpty())
            limpio = QStringLiteral("Hoja");
        limpio.truncate(31);
        QString unico = limpio;
        for (int k = 2; usados.count(unico.toUpper()); ++k) {
            const QString sufijo = QStringLiteral(" (%1)").arg(k);
            unico = limpio.left(31 - sufijo.size()).trimmed() + sufijo;
        }
        usados.insert(unico.toUpper());
        r.push_back(unico);
    }
    return r;
}

QString Libro(const std::vector<HojaExportada>& hojas, const QString& archivo)
{
    QString razon;
    // The file is opened here first: a folder that is missing or barred is
    // told at once, before any row is written.
    FILE* prueba = abrir(archivo, razon);
    if (!prueba)
        return razon;
    std::fclose(prueba);

    lxw_workbook_options opciones {};
    // Each row goes to disk as it is written: a load of many rows needs no
    // more memory than one row.
    opciones.constant_memory = LXW_TRUE;
    lxw_workbook* libro = workbook_new_opt(QFile::encodeName(archivo).constData(), &opciones);
    if (!libro)
        return razonDelSistema(ENOMEM);
    Formatos formatos(libro);
    std::vector<QString> nombres;
    for (const HojaExportada& h : hojas)
        nombres.push_back(h.nombre);
    nombres = Nombres_De_Hojas(nombres);
    for (size_t k = 0; k < hojas.size(); ++k) {
        lxw_worksheet* hoja = workbook_add_worksheet(libro, nombres[k].toUtf8().constData());
        if (!hoja || !hojas[k].rejilla)
            continue;
        Lectura l(*hojas[k].rejilla);
        escribirHoja(hoja, l, formatos);
    }
    errno = 0;
    const lxw_error error = workbook_close(libro);
    const int sistema = errno;
    if (error == LXW_NO_ERROR)
        return {};
    if (QFileInfo(archivo).isFile())
        QFile::remove(archivo);
    return razonDelLibro(error, sistema);
}

QString Texto_Separado(const Rejilla& rejilla, const QString& archivo)
{
    Lectura l(rejilla);
    const size_t n = l.columnas().size();
    QByteArray salida("\xEF\xBB\xBF");
    salida.reserve(qsizetype(l.filas() + 2) * qsizetype(n) * 10);
    auto linea = [&](const std::function<QString(size_t)>& campo) {
        for (size_t i = 0; i < n; ++i) {
            if (i)
                salida += ';';
            agregarCampo(salida, campo(i));
        }
        salida += "\r\n";
    };
    linea([&](size_t i) { return l.titulo(i); });
    for (int f = 0; f < l.filas(); ++f)
        linea([&](size_t i) { return textoDelCampo(l.celda(f, i, true)); });
    if (l.conPies())
        linea([&](size_t i) { return textoDelCampo(l.pie(i)); });

    QString razon;
    FILE* f = abrir(archivo, razon);
    if (!f)
        return razon;
    errno = 0;
    const bool escrito = std::fwrite(salida.constData(), 1, size_t(salida.size()), f) == size_t(salida.size());
    int error = errno;
    if (std::fclose(f) != 0 && error == 0)
        error = errno;
    if (escrito && error == 0)
        return {};
    return razonDelSistema(error ? error : EIO);
}

} // namespace Exportar
