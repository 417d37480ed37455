#include "guardia.h"

#include <QRegularExpression>

#include <initializer_list>
#include <set>

namespace {

bool esDigito(QChar c) { return c.unicode() >= '0' && c.unicode() <= '9'; }
bool esLetra(QChar c) { return (c.unicode() >= 'a' && c.unicode() <= 'z') || (c.unicode() >= 'A' && c.unicode() <= 'Z'); }
// Words are ASCII: a letter that looks like another to one server and not to
// the other could otherwise pass here as a known name.
bool empiezaPalabra(QChar c) { return esLetra(c) || c == QLatin1Char('_') || c == QLatin1Char('@') || c == QLatin1Char('#'); }
bool siguePalabra(QChar c) { return empiezaPalabra(c) || esDigito(c) || c == QLatin1Char('$'); }
// The blanks that both servers read as blanks.
bool esBlanco(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QLatin1Char('\r') || c == QLatin1Char('\n');
}

} // namespace

namespace Guardia {

FalloEjecucion sintaxis(const QString& cerca)
{
    return FalloEjecucion::servidor(QStringLiteral("Incorrect syntax near '%1'.").arg(cerca));
}

std::vector<Pieza> trocear(const QString& sql)
{
    std::vector<Pieza> piezas;
    qsizetype i = 0;
    const qsizetype n = sql.size();
    while (i < n) {
        const QChar c = sql[i];
        if (esBlanco(c)) {
            ++i;
            continue;
        }
        const qsizetype inicio = i;
        if (empiezaPalabra(c)) {
            while (i < n && siguePalabra(sql[i]))
                ++i;
            piezas.push_back({Pieza::Palabra, inicio, i, sql.mid(inicio, i - inicio)});
        } else if (esDigito(c) || (c == QLatin1Char('.') && i + 1 < n && esDigito(sql[i + 1]))) {
            while (i < n && esDigito(sql[i]))
                ++i;
            if (i < n && sql[i] == QLatin1Char('.'))
                for (++i; i < n && esDigito(sql[i]);)
                    ++i;
            if (i < n && siguePalabra(sql[i]))
                throw sintaxis(sql.mid(inicio, i + 1 - inicio));
            piezas.push_back({Pieza::Numero, inicio, i, sql.mid(inicio, i - inicio)});
        } else if (c == QLatin1Char('\'')) {
            QString valor;
            for (++i;; ++i) {
                if (i >= n)
                    throw FalloEjecucion::servidor(
                        QStringLiteral("Unclosed quotation mark after the character string '%1'.").arg(valor));
                if (sql[i] == QLatin1Char('\'')) {
                    if (i + 1 < n && sql[i + 1] == QLatin1Char('\'')) {
                        valor += QLatin1Char('\'');
                        ++i;
                        continue;
                    }
                    ++i;
                    break;
                }
                // No field of the program holds a control character: one
                // inside a value (a NUL would cut it on one server and not on
                // the other) is refused like a broken text.
                const char16_t u = sql[i].unicode();
                if ((u < 0x20 && !esBlanco(sql[i])) || u == 0x7f)
                    throw sintaxis(valor);
                valor += sql[i];
            }
            piezas.push_back({Pieza::Cadena, inicio, i, valor});
        } else {
            static const char* const dobles[] = {"<=", ">=", "<>", "!="};
            QString simbolo;
            for (const char* d : dobles)
                if (sql.mid(i, 2) == QLatin1String(d))
                    simbolo = QLatin1String(d);
            if (simbolo.isEmpty() && QStringLiteral("=<>+-*/(),").contains(c))
                simbolo = c;
            const bool comentario = sql.mid(i, 2) == QLatin1String("--") || sql.mid(i, 2) == QLatin1String("/*");
            if (simbolo.isEmpty() || comentario)
                throw sintaxis(sql.mid(i, comentario ? 2 : 1));
            i += simbolo.size();
            piezas.push_back({Pieza::Simbolo, inicio, i, simbolo});
        }
    }
    return piezas;
}

bool reservada(const Pieza& p)
{
    static const char* const palabras[] = {
        "SELECT", "INSERT", "UPDATE", "DELETE", "FROM", "WHERE", "INTO", "SET", "VALUES", "UNION", "EXCEPT",
        "INTERSECT", "EXEC", "EXECUTE", "DROP", "CREATE", "ALTER", "ATTACH", "DETACH", "PRAGMA", "TOP", "ORDER",
        "GROUP", "HAVING", "LIMIT", "JOIN", "ON", "AS", "REPLACE", "BEGIN", "COMMIT", "ROLLBACK", "VACUUM",
        "RETURNING", "WITH", "TABLE", "INDEX", "TRIGGER", "VIEW", "DECLARE", "GO", "USE", "GRANT"};
    if (p.clase != Pieza::Palabra)
        return false;
    for (const char* w : palabras)
        if (p.es(w))
            return true;
    return false;
}

} // namespace Guardia

namespace {

using Guardia::Pieza;
using Guardia::sintaxis;

// What a number column of either server takes from a quoted text: blanks
// around an optional sign, digits and decimal points, and an exponent.
bool esNumero(const QString& texto)
{
    static const QRegularExpression numero(QStringLiteral("^[ \\t\\r\\n]*[+-]?[0-9.]*(?:[eE][+-]?[0-9]+)?[ \\t\\r\\n]*$"));
    return numero.match(texto).hasMatch();
}

// The length of the Zelle bank's column on SQL Server: the longest short text.
constexpr int kCorto = 5;

// The server's refusal of a text that does not convert to a number.
FalloEjecucion conversion(const QString& texto)
{
    return FalloEjecucion::servidor(
        QStringLiteral("Conversion failed when converting the varchar value '%1' to data type int.").arg(texto));
}

// Reads one statement of a raw text piece by piece against the shape it
// must have; the first piece out of place is the refusal, named as the server
// names the place of a syntax error.
class Lector {
public:
    Lector(const std::vector<Pieza>& piezas, size_t desde, size_t hasta) : p_(piezas), i_(desde), fin_(hasta) {}

    bool alFinal() const { return i_ >= fin_; }
    const Pieza* actual() const { return alFinal() ? nullptr : &p_[i_]; }
    bool viene(const char* palabra) const { return !alFinal() && p_[i_].es(palabra); }
    bool vieneSimbolo(const char* s) const { return !alFinal() && p_[i_].esSimbolo(s); }

    [[noreturn]] void rechazar() const
    {
        throw sintaxis(alFinal() ? (fin_ > 0 ? p_[fin_ - 1].texto : QString()) : p_[i_].texto);
    }
    void palabra(const char* w)
    {
        if (!viene(w))
            rechazar();
        ++i_;
    }
    void simbolo(const char* s)
    {
        if (!vieneSimbolo(s))
            rechazar();
        ++i_;
    }
    bool aceptar(const char* w)
    {
        if (!viene(w))
            return false;
        ++i_;
        return true;
    }
    bool aceptarSimbolo(const char* s)
    {
        if (!vieneSimbolo(s))
            return false;
        ++i_;
        return true;
    }
    // A literal value: a quoted text, a number, or a number with its sign.
    void literal()
    {
        if (aceptarSimbolo("-") || aceptarSimbolo("+")) {
            if (alFinal() || p_[i_].clase != Pieza::Numero)
                rechazar();
            ++i_;
            return;
        }
        if (alFinal() || (p_[i_].clase != Pieza::Numero && p_[i_].clase != Pieza::Cadena))
            rechazar();
        ++i_;
    }
    // What a value of a column may be. A quote typed into one value and
    // another into a later one turn the statement's own joining text
    // ("', pago =  '", "','") into values and the typed text between into
    // assignments; that joining text fits no column but a free text, so
    // each column that the screens fill otherwise says what it holds.
    enum class Tipo {
        Texto,  // any literal
        Numero, // a number, or a quoted text holding one (or only blanks, read as 0), as the servers convert it
        Fecha,  // yyyymmdd in quotes; a date cell typed shorter is taken apart by position into digits and slashes
        Hora,   // hh:mm:ss in quotes
        Corto,  // a quoted text of a few characters, as long as the column is on SQL Server
    };
    void valor(Tipo tipo)
    {
        const Pieza* p = alFinal() ? nullptr : &p_[i_];
        if (tipo != Tipo::Texto && tipo != Tipo::Numero && (!p || p->clase != Pieza::Cadena))
            rechazar();
        literal();
        if (p->clase != Pieza::Cadena)
            return;
        const QString& t = p->texto;
        const auto soloDe = [&t](QChar otro) {
            for (QChar c : t)
                if (!esDigito(c) && c != otro && !esBlanco(c))
                    return false;
            return true;
        };
        if ((tipo == Tipo::Numero && !esNumero(t)) || (tipo == Tipo::Fecha && !soloDe(QLatin1Char('/')))
            || (tipo == Tipo::Hora && !soloDe(QLatin1Char(':'))))
            throw conversion(t);
        if (tipo == Tipo::Corto && t.size() > kCorto)
            throw FalloEjecucion::servidor(QStringLiteral("String or binary data would be truncated."));
    }
    // "name = literal", the name being the one given.
    void igualA(const char* nombre, Tipo tipo = Tipo::Texto)
    {
        palabra(nombre);
        simbolo("=");
        valor(tipo);
    }
    void terminar() const
    {
        if (!alFinal())
            rechazar();
    }
    size_t posicion() const { return i_; }
    // The pieces read from `desde` on, as one text: a quoted value without
    // its quotes, a signed number with its sign.
    QString leidoDesde(size_t desde) const
    {
        QString r;
        for (size_t k = desde; k < i_; ++k)
            r += p_[k].texto;
        return r;
    }

private:
    const std::vector<Pieza>& p_;
    size_t i_;
    size_t fin_;
};

using Tipo = Lector::Tipo;

// The kinds of statement a batch may hold; a batch holds one kind only.
enum class Clase { Alta, Guardado, Regalo, Borrado };

// Columns of a new transaction, all given by position.
constexpr int kValoresDeAlta = 28;

// " INSERT INTO MOVIMIENTOS VALUES (" 28 literals ")"
void alta(Lector& l)
{
    l.palabra("INTO");
    l.palabra("MOVIMIENTOS");
    l.palabra("VALUES");
    l.simbolo("(");
    // The positions of the number columns, from 1: the sequence, the client,
    // the amounts, the provider, the payment, the rate, the types, the
    // reserved numbers, the gains and the payment's rates.
    static const std::set<int> numericas = {2, 3, 4, 5, 6, 7, 10, 12, 13, 14, 16, 17, 19, 21, 22, 23, 26, 27};
    for (int k = 1; k <= kValoresDeAlta; ++k) {
        if (k > 1)
            l.simbolo(",");
        l.valor(k == 1 ? Tipo::Fecha : numericas.count(k) ? Tipo::Numero : Tipo::Texto);
    }
    l.simbolo(")");
}

// One assignment of a saved row: the column and what its value holds.
struct Asignacion {
    const char* columna;
    Tipo tipo;
};
using Asignaciones = std::vector<Asignacion>;

// The assignments the consoles write, in the order they write them. Every
// console saves the common run up to "ganancia" and ends with
// "tipo_servicio"; between them come the gains, the payment's date, time and
// rates, and the Zelle bank, as the console and its mode of save send them.
// Only these lists in this order pass: a text typed into a note cannot add
// an assignment without breaking the order, and the assignments a longer list
// has more hold no free text, so the joining text of the statement cannot
// stand in one of them either.
const std::vector<Asignaciones>& asignacionesDeGuardado()
{
    static const std::vector<Asignaciones> listas = [] {
        const Asignaciones comun = {{"recibido", Tipo::Numero},       {"enviado", Tipo::Numero},
                                    {"C_CLIENTE", Tipo::Numero},      {"obs", Tipo::Texto},
                                    {"C_PROVEEDOR", Tipo::Numero},    {"pago", Tipo::Numero},
                                    {"C_BANCO", Tipo::Texto},         {"operadora", Tipo::Texto},
                                    {"REFERENCIA", Tipo::Texto},      {"confirmacion", Tipo::Numero},
                                    {"tipo_operacion", Tipo::Numero}, {"ganancia", Tipo::Numero}};
        const Asignaciones ganancias = {{"g1", Tipo::Numero}, {"g2", Tipo::Numero}, {"g3", Tipo::Numero}};
        const Asignaciones pago = {{"fecha_pago", Tipo::Fecha}, {"hora_pago", Tipo::Hora},
                                   {"dolar1", Tipo::Numero},    {"dolar2", Tipo::Numero}};
        const Asignaciones zelle = {{"bancozelle", Tipo::Corto}};
        const auto unir = [&](std::initializer_list<const Asignaciones*> partes) {
            Asignaciones r = comun;
            for (const auto* p : partes)
                r.insert(r.end(), p->begin(), p->end());
            r.push_back({"tipo_servicio", Tipo::Numero});
            return r;
        };
        return std::vector<Asignaciones>{
            unir({}),                          // the USDT console
            unir({&ganancias}),                // the console by date of payment
            unir({&ganancias, &zelle}),        // a plain save
            unir({&ganancias, &pago, &zelle}), // a payment run
        };
    }();
    return listas;
}

// "fecha = " literal " and secuencia = " literal: the key of the transaction
// that a save or a delete names, as its two values read.
Guardia::Clave clave(Lector& l, const char* fecha, const char* secuencia)
{
    Guardia::Clave c;
    size_t valor = l.posicion() + 2; // after the name and "="
    l.igualA(fecha, Tipo::Fecha);
    c.fecha = l.leidoDesde(valor);
    l.palabra("and");
    valor = l.posicion() + 2;
    l.igualA(secuencia, Tipo::Numero);
    c.secuencia = l.leidoDesde(valor);
    return c;
}

// " UPDATE MOVIMIENTOS SET " assignments " WHERE FECHA= " literal " and SECUENCIA = " literal
Guardia::Clave guardado(Lector& l)
{
    l.palabra("SET");
    // Follows the lists that agree with what was read so far.
    std::vector<const Asignaciones*> posibles;
    for (const auto& lista : asignacionesDeGuardado())
        posibles.push_back(&lista);
    for (size_t k = 0;; ++k) {
        const Pieza* p = l.actual();
        std::vector<const Asignaciones*> siguen;
        for (const auto* lista : posibles)
            if (p && k < lista->size() && p->es((*lista)[k].columna))
                siguen.push_back(lista);
        if (siguen.empty())
            l.rechazar();
        posibles = std::move(siguen);
        const Asignacion& a = (*posibles.front())[k];
        l.igualA(a.columna, a.tipo);
        // The list ends where one of them is complete; elsewhere a comma follows.
        bool completa = false;
        for (const auto* lista : posibles)
            completa = completa || lista->size() == k + 1;
        if (completa && l.viene("WHERE"))
            break;
        l.simbolo(",");
    }
    l.palabra("WHERE");
    return clave(l, "FECHA", "SECUENCIA");
}

// " UPDATE proveedor SET  regalo = regalo +  " literal ", ultregalo =  " literal " WHERE C_proveedor =  " literal
// " UPDATE proveedor SET  regalo = regalo -  " literal " WHERE C_proveedor =  " literal
void regalo(Lector& l)
{
    l.palabra("SET");
    l.palabra("regalo");
    l.simbolo("=");
    l.palabra("regalo");
    if (l.aceptarSimbolo("+")) {
        l.valor(Tipo::Numero);
        l.simbolo(",");
        l.igualA("ultregalo", Tipo::Numero);
    } else {
        l.simbolo("-");
        l.valor(Tipo::Numero);
    }
    l.palabra("WHERE");
    l.igualA("C_proveedor", Tipo::Numero);
}

// "delete movimientos where  fecha = " literal " and secuencia =  " literal
Guardia::Clave borrado(Lector& l)
{
    l.palabra("movimientos");
    l.palabra("where");
    return clave(l, "fecha", "secuencia");
}

// One statement of a batch; the key of the transaction it saves or deletes
// goes to `claves`.
Clase cambio(const std::vector<Pieza>& piezas, size_t desde, size_t hasta, std::vector<Guardia::Clave>& claves)
{
    Lector l(piezas, desde, hasta);
    Clase clase;
    if (l.aceptar("INSERT")) {
        alta(l);
        clase = Clase::Alta;
    } else if (l.aceptar("UPDATE")) {
        if (l.aceptar("MOVIMIENTOS")) {
            claves.push_back(guardado(l));
            clase = Clase::Guardado;
        } else {
            l.palabra("proveedor");
            regalo(l);
            clase = Clase::Regalo;
        }
    } else {
        l.palabra("delete");
        claves.push_back(borrado(l));
        clase = Clase::Borrado;
    }
    l.terminar();
    return clase;
}

} // namespace

namespace Guardia {

void guardable(const QString& texto)
{
    // Beyond ASCII and Latin-1's letters and signs, Windows-1252 holds these
    // in the places where Latin-1 has its control codes.
    static const std::set<char32_t> deWindows = {
        0x20AC, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x017D, 0x2018,
        0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x017E, 0x0178};
    for (const char32_t c : texto.toUcs4()) {
        if (c < 0x80 || (c >= 0xA0 && c <= 0xFF) || deWindows.count(c))
            continue;
        throw FalloEjecucion::servidor(
            QStringLiteral("El texto \"%1\" tiene el carácter '%2', que la base de datos no puede guardar.")
                .arg(texto, QString::fromUcs4(&c, 1)));
    }
}

void consulta(const QString& sql)
{
    const std::vector<Pieza> piezas = trocear(sql);
    Lector l(piezas, 0, piezas.size());
    l.palabra("SELECT");
    if (l.aceptar("FECHA")) {
        l.simbolo("=");
        l.palabra("GETDATE");
        l.simbolo("(");
        l.simbolo(")");
    } else if (l.aceptar("TOP")) {
        // Only the photo of a client is read with a limit.
        const Pieza* n = l.actual();
        if (!n || n->clase != Pieza::Numero)
            l.rechazar();
        l.literal();
        l.simbolo("*");
        l.palabra("from");
        l.palabra("fotos");
        l.palabra("where");
        l.igualA("cliente", Tipo::Numero);
    } else {
        l.simbolo("*");
        l.palabra("from");
        if (l.aceptar("fotos")) {
            l.palabra("where");
            l.igualA("cliente", Tipo::Numero);
        } else if (!l.aceptar("dolar") && !l.aceptar("dolar_NEW")) {
            l.rechazar();
        }
    }
    l.terminar();
}

std::vector<Clave> cambios(const QString& sql, int sentencias)
{
    const std::vector<Pieza> piezas = trocear(sql);
    if (piezas.empty())
        throw sintaxis(QString());
    // The statements of a batch stand one behind the other with no separator:
    // each INSERT, UPDATE or DELETE outside quotes starts the next one. A
    // screen sends a run of new or of saved transactions, or one gift update,
    // or one delete: a statement of another kind, or any second statement
    // after a gift update or a delete, is refused where it starts.
    size_t desde = 0;
    Clase primera = Clase::Alta;
    std::vector<Clave> claves;
    for (size_t k = 1; k <= piezas.size(); ++k) {
        if (k < piezas.size() && !piezas[k].es("INSERT") && !piezas[k].es("UPDATE") && !piezas[k].es("DELETE"))
            continue;
        const Clase clase = cambio(piezas, desde, k, claves);
        if (desde == 0)
            primera = clase;
        else if (clase != primera || (clase != Clase::Alta && clase != Clase::Guardado) || --sentencias < 1)
            throw sintaxis(piezas[desde].texto);
        desde = k;
    }
    if (sentencias != 1)
        throw sintaxis(piezas.back().texto);
    for (const Pieza& p : piezas)
        if (p.clase == Pieza::Cadena)
            guardable(p.texto);
    return claves;
}

} // namespace Guardia
