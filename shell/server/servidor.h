#pragma once
// What a database backend must do for the client: run a procedure with
// positional values, open a raw select, execute a raw INSERT/UPDATE/delete
// (or a batch of them). Results come back fully fetched.
#include "valor.h"

#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

struct ConjuntoResultados {
    QStringList columnas;                  // names as the server spells them
    std::vector<std::vector<Valor>> filas; // every row, already fetched
};
using Resultados = std::vector<ConjuntoResultados>;

// Where a server hands the rows of a result as it reads them, one at a time.
class Receptor {
public:
    virtual ~Receptor() = default;
    // A result set starts, with its columns.
    virtual void conjunto(const QStringList& columnas) = 0;
    // A row of the set that started last; the receptor may take its values.
    virtual void fila(std::vector<Valor>& valores) = 0;
};

// The receptor that keeps every row: a result fully fetched.
class Acumulador : public Receptor {
public:
    void conjunto(const QStringList& columnas) override { resultados.push_back({columnas, {}}); }
    void fila(std::vector<Valor>& valores) override { resultados.back().filas.push_back(std::move(valores)); }
    Resultados resultados;
};

// A positional value; an unset one is left to the procedure's default.
using Parametro = std::optional<Valor>;

// A transaction that a batch saves or deletes, with the version its screen
// loaded it at: the date yyyymmdd (digits only) and the sequence.
struct VersionEsperada {
    QString fecha;
    int secuencia = 0;
    qint64 version = 0;
};
using VersionesEsperadas = std::vector<VersionEsperada>;

class Servidor {
public:
    virtual ~Servidor() = default;
    // Opens the connection; a failure throws FalloEjecucion.
    virtual void abrir() = 0;
    virtual void cerrar() = 0;
    virtual bool abierto() const = 0;
    // True when the backend runs on this machine (the embedded server): then the
    // machine's clock is the server's clock and the clock step is not needed.
    virtual bool esLocal() const = 0;
    // A stored procedure. Values bind by position; trailing unset ones are not sent.
    virtual Resultados procedimiento(const QString& nombre, const std::vector<Parametro>& valores) = 0;
    // The same call, with each row handed to the receptor as it comes, so
    // that a long result is never held whole. The receptor's failure ends
    // the call as the server's own would. By default the result is fetched
    // whole first, then handed over.
    virtual void procedimientoPorFilas(const QString& nombre, const std::vector<Parametro>& valores, Receptor& receptor)
    {
        for (ConjuntoResultados& c : procedimiento(nombre, valores)) {
            receptor.conjunto(c.columnas);
            for (std::vector<Valor>& fila : c.filas)
                receptor.fila(fila);
        }
    }
    // A raw select (and the server clock): the text as the client writes it.
    virtual Resultados abrirConsulta(const QString& sql) = 0;
    // A raw INSERT, UPDATE, delete, or a batch of `sentencias` of them without
    // separators. Each transaction of `esperadas` must still be there at that
    // version, read in the batch's own transaction before any statement runs;
    // otherwise nothing is written and FalloFilasCambiadas names those rows.
    virtual void ejecutar(const QString& sql, int sentencias = 1, const VersionesEsperadas& esperadas = {}) = 0;
};

// Builds the backend named by a connection string:
//   "Provider=embebido;Data Source=<file>"  the embedded server (created with demo data when missing)
//   "Provider=sqlserver;Server=<host>,<port>;Database=..;User=..;Password={..};Timeout=10"
// A value in braces may hold ";" and "=": it ends at a "}" before ";" or at the end.
std::unique_ptr<Servidor> crearServidor(const QString& cadenaConexion);
