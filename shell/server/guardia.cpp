#include "guardia.h"

#include "lector_tsql.h"

#include <QRegularExpression>

#include <initializer_list>
#include <set>

namespace {

using LectorTsql::esBlanco;
using LectorTsql::Pieza;
using LectorTsql::sintaxis;

bool esDigito(QChar c) { return c.unicode() >= '0' && c.unicode() <= '9'; }

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
// must have.
class Lector : public LectorTsql::Cursor {
public:
    using Cursor::Cursor;

    // A literal value: a quoted text, a number, or a number with its sign.
    void literal()
    {
        const bool signo = aceptarSimbolo("-") || aceptarSimbolo("+");
        const Pieza& p = actual();
        if (p.clase != Pieza::Numero && (signo || p.clase != Pieza::Cadena))
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
        const Pieza& p = actual();
        if (tipo != Tipo::Texto && tipo != Tipo::Numero && p.clase != Pieza::Cadena)
            rechazar();
        literal();
        if (p.clase != Pieza::Cadena)
            return;
        const QString& t = p.texto;
        const auto soloDe = [&t](QChar otro) {
            for (QChar c : t)
                if (!esDigito(c) && c != otro && !esBlanco(c))
                    return false;
            return true;
        };
        if ((tipo == Tipo::Numero && !esNumero(t)) || (tipo == Tipo::Fecha && !soloDe(QLatin1Char('/'))) ||
            (tipo == Tipo::Hora && !soloDe(QLatin1Char(':'))))
            throw conversion(t);
        if (tipo == Tipo::Corto && t.size() > kCorto)
            throw FalloEjecucion::servidor(QStringLiteral("String or binary data would be truncated."));
    }
    // "name = literal", the name being the one given.
    void igualA(const char* nombre, Tipo tipo = Tipo::Texto)
    {
        esperar(nombre);
        esperarSimbolo("=");
        valor(tipo);
    }
    // The pieces read from `desde` on, as one text: a quoted value without
    // its quotes, a signed number with its sign.
    QString leidoDesde(size_t desde) const
    {
        QString r;
        for (size_t k = desde; k < i_; ++k)
            r += p_[k].texto;
        return r;
    }
};

using Tipo = Lector::Tipo;

// The kinds of statement a batch may hold; a batch holds one kind only.
enum class Clase { Alta, Guardado, Regalo, Borrado };

// Columns of a new transaction, all given by position.
constexpr int kValoresDeAlta = 28;

// " INSERT INTO MOVIMIENTOS VALUES (" 28 literals ")"
void alta(Lector& l)
{
    l.esperar("INTO");
    l.esperar("MOVIMIENTOS");
    l.esperar("VALUES");
    l.esperarSimbolo("(");
    // The positions of the number columns, from 1: the sequence, the client,
    // the amounts, the provider, the payment, the rate, the types, the
    // reserved numbers, the gains and the payment's rates.
    static const std::set<int> numericas = {2, 3, 4, 5, 6, 7, 10, 12, 13, 14, 16, 17, 19, 21, 22, 23, 26, 27};
    for (int k = 1; k <= kValoresDeAlta; ++k) {
        if (k > 1)
            l.esperarSimbolo(",");
        l.valor(k == 1 ? Tipo::Fecha : numericas.count(k) ? Tipo::Numero : Tipo::Texto);
    }
    l.esperarSimbolo(")");
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
        const Asignaciones comun = {{"recibido", Tipo::Numero},     {"enviado", Tipo::Numero},        {"C_CLIENTE", Tipo::Numero},
                                    {"obs", Tipo::Texto},           {"C_PROVEEDOR", Tipo::Numero},    {"pago", Tipo::Numero},
                                    {"C_BANCO", Tipo::Texto},       {"operadora", Tipo::Texto},       {"REFERENCIA", Tipo::Texto},
                                    {"confirmacion", Tipo::Numero}, {"tipo_operacion", Tipo::Numero}, {"ganancia", Tipo::Numero}};
        const Asignaciones ganancias = {{"g1", Tipo::Numero}, {"g2", Tipo::Numero}, {"g3", Tipo::Numero}};
        const Asignaciones pago = {
            {"fecha_pago", Tipo::Fecha}, {"hora_pago", Tipo::Hora}, {"dolar1", Tipo::Numero}, {"dolar2", Tipo::Numero}};
        const Asignaciones zelle = {{"bancozelle", Tipo::Corto}};
        const auto unir = [&](std::initializer_list<const Asignaciones*> partes) {
            Asignaciones r = comun;
            for (const auto* p : partes)
                r.insert(r.end(), p->begin(), p->end());
            r.push_back({"tipo_servicio", Tipo::Numero});
            return r;
        };
        return std::vector<Asignaciones> {
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
    l.esperar("and");
    valor = l.posicion() + 2;
    l.igualA(secuencia, Tipo::Numero);
    c.secuencia = l.leidoDesde(valor);
    return c;
}

// " UPDATE MOVIMIENTOS SET " assignments " WHERE FECHA= " literal " and SECUENCIA = " literal
Guardia::Clave guardado(Lector& l)
{
    l.esperar("SET");
    // Follows the lists that agree with what was read so far.
    std::vector<const Asignaciones*> posibles;
    for (const auto& lista : asignacionesDeGuardado())
        posibles.push_back(&lista);
    for (size_t k = 0;; ++k) {
        const Pieza& p = l.actual();
        std::vector<const Asignaciones*> siguen;
        for (const auto* lista : posibles)
            if (k < lista->size() && p.es((*lista)[k].columna))
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
        l.esperarSimbolo(",");
    }
    l.esperar("WHERE");
    return clave(l, "FECHA", "SECUENCIA");
}

// " UPDATE proveedor SET  regalo = regalo +  " literal ", ultregalo =  " literal " WHERE C_proveedor =  " literal
// " UPDATE proveedor SET  regalo = regalo -  " literal " WHERE C_proveedor =  " literal
void regalo(Lector& l)
{
    l.esperar("SET");
    l.esperar("regalo");
    l.esperarSimbolo("=");
    l.esperar("regalo");
    if (l.aceptarSimbolo("+")) {
        l.valor(Tipo::Numero);
        l.esperarSimbolo(",");
        l.igualA("ultregalo", Tipo::Numero);
    } else {
        l.esperarSimbolo("-");
        l.valor(Tipo::Numero);
    }
    l.esperar("WHERE");
    l.igualA("C_proveedor", Tipo::Numero);
}

// "delete movimientos where  fecha = " literal " and secuencia =  " literal
Guardia::Clave borrado(Lector& l)
{
    l.esperar("movimientos");
    l.esperar("where");
    return clave(l, "fecha", "secuencia");
}

// One statement of a batch; the key of the transaction it saves or deletes
// goes to `claves`.
Clase cambio(const LectorTsql::Piezas& piezas, size_t desde, size_t hasta, std::vector<Guardia::Clave>& claves)
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
            l.esperar("proveedor");
            regalo(l);
            clase = Clase::Regalo;
        }
    } else {
        l.esperar("delete");
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
    static const std::set<char32_t> deWindows = {0x20AC, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030,
                                                 0x0160, 0x2039, 0x0152, 0x017D, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
                                                 0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x017E, 0x0178};
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
    const LectorTsql::Piezas piezas = LectorTsql::trocear(sql);
    Lector l(piezas, 0, piezas.size());
    l.esperar("SELECT");
    if (l.aceptar("FECHA")) {
        l.esperarSimbolo("=");
        l.esperar("GETDATE");
        l.esperarSimbolo("(");
        l.esperarSimbolo(")");
    } else if (l.aceptar("TOP")) {
        // Only the photo of a client is read with a limit.
        if (l.actual().clase != Pieza::Numero)
            l.rechazar();
        l.literal();
        l.esperarSimbolo("*");
        l.esperar("from");
        l.esperar("fotos");
        l.esperar("where");
        l.igualA("cliente", Tipo::Numero);
    } else {
        l.esperarSimbolo("*");
        l.esperar("from");
        if (l.aceptar("fotos")) {
            l.esperar("where");
            l.igualA("cliente", Tipo::Numero);
        } else if (!l.aceptar("dolar") && !l.aceptar("dolar_NEW")) {
            l.rechazar();
        }
    }
    l.terminar();
}

std::vector<Clave> cambios(const QString& sql, int sentencias)
{
    const LectorTsql::Piezas piezas = LectorTsql::trocear(sql);
    if (piezas.empty())
        throw sintaxis(QString());
    // A screen sends a run of new or of saved transactions, or one gift update,
    // or one delete: a statement of another kind, or any second statement
    // after a gift update or a delete, is refused where it starts.
    Clase primera = Clase::Alta;
    std::vector<Clave> claves;
    for (const auto& [desde, hasta] : LectorTsql::sentencias(piezas)) {
        const Clase clase = cambio(piezas, desde, hasta, claves);
        if (desde == 0)
            primera = clase;
        else if (clase != primera || (clase != Clase::Alta && clase != Clase::Guardado) || --sentencias < 1)
            throw sintaxis(piezas[desde].texto);
    }
    if (sentencias != 1)
        throw sintaxis(piezas.back().texto);
    for (const Pieza& p : piezas)
        if (p.clase == Pieza::Cadena)
            guardable(p.texto);
    return claves;
}

} // namespace Guardia
