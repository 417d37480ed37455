#pragma once
// The server contract of the screens: one connection, one command reused for
// every procedure call, and result sets read by column name.
#include "fallo.h"
#include "servidor.h"

#include <QHash>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

class Conexion;

// The versions of the transactions of one load of a console, by their key:
// what the console's saves and deletes are checked against. Made whole by
// the connection and never changed afterwards, so that a screen can keep it.
class VersionesCargadas {
public:
    // The date yyyymmdd and the sequence in one number.
    static quint64 clave(int fechaAmd, int secuencia) { return (quint64(quint32(fechaAmd)) << 32) | quint32(secuencia); }
    // A row of the load; one whose date is not yyyymmdd is not kept.
    void poner(const Valor& fecha, const Valor& secuencia, const Valor& version);
    void reservar(qsizetype filas) { versiones_.reserve(filas); }
    // The version the row was loaded at; nothing when it was not loaded.
    std::optional<qint64> version(int fechaAmd, int secuencia) const;
    qsizetype size() const { return versiones_.size(); }

private:
    QHash<quint64, qint64> versiones_;
};
using Versiones = std::shared_ptr<const VersionesCargadas>;

// A fully fetched result: one or more sets, a current set and a current row.
class Recordset {
public:
    Recordset() = default;
    explicit Recordset(Resultados conjuntos);

    bool Eof() const;
    void MoveNext();
    void MoveFirst();
    // The current row's value of the column, by name, whatever its capitals.
    const Valor& Fields(const QString& nombre) const;
    bool TieneCampo(const QString& nombre) const;
    // The position of a column in the current set, whatever its capitals, so
    // that a load of many rows looks each name up once; a missing column is
    // the failure Fields gives.
    int Ordinal(const QString& nombre) const;
    // The current row's value of the column at that position (read for every
    // field of every row of a load: kept inline).
    const Valor& Fields(int ordinal) const
    {
        const ConjuntoResultados* c = actual();
        if (!c)
            throw FalloEjecucion::objetoCerrado();
        if (fila_ >= c->filas.size())
            throw FalloEjecucion::finDeDatos();
        const std::vector<Valor>& fila = c->filas[fila_];
        if (ordinal < 0 || size_t(ordinal) >= fila.size())
            throw FalloEjecucion::fueraDeRango();
        return fila[size_t(ordinal)];
    }
    long RecordCount() const;
    // Moves to the next set; false, and every later read a failure, past the last.
    bool NextRecordset();
    // The raw open of the contract: a select on the connection.
    void Open(const QString& sql, Conexion& conexion);
    bool Abierto() const { return abierto_; }
    void Close();
    // A window on a result read row by row: the columns, then each row in
    // turn as the only and current one; no row stays behind.
    void Ventana(const QStringList& columnas);
    void Pon_Fila(std::vector<Valor>& fila);
    // The columns of the current set; none when closed or past the last.
    QStringList columnas() const;

private:
    const ConjuntoResultados* actual() const
    {
        return abierto_ && conjunto_ < conjuntos_.size() ? &conjuntos_[conjunto_] : nullptr;
    }
    Resultados conjuntos_;
    size_t conjunto_ = 0;
    size_t fila_ = 0;
    bool abierto_ = false;
};

class Conexion {
public:
    QString ConnectionString;
    int ConnectionTimeout = 15;
    int CommandTimeout = 30;
    int CursorLocation = 2;

    void Open();
    void Close();
    bool Abierta() const { return servidor_ && servidor_->abierto(); }
    // Raw INSERT, UPDATE, delete, or a batch of them. `sentencias` is how many
    // statements the screen built: a text that reads as any other number was
    // reshaped by what an operator typed, and is refused. With the versions of
    // a screen's load, each transaction of that load that the batch saves or
    // deletes must still be at the version loaded: otherwise nothing is
    // written and FalloFilasCambiadas names the rows.
    void Execute(const QString& sql, int sentencias = 1, const Versiones& vistas = {});
    // The versions of the rows of the last procedure run, when its result
    // carried them (version_fila, with Fecha and secuenciA); null otherwise.
    Versiones VersionesDeLaCarga() const { return versiones_; }
    bool EsLocal() const { return servidor_ && servidor_->esLocal(); }
    Servidor& servidor();

private:
    friend class Comando;
    void tomarVersiones(const Resultados& resultados);
    // The versions of a result read row by row: its columns, then each row.
    class LectorDeVersiones;
    std::unique_ptr<Servidor> servidor_;
    Versiones versiones_;
};

class Comando {
public:
    QString CommandText;
    int CommandTimeout = 30;
    int CommandType = 4; // stored procedure
    Conexion* ActiveConnection = nullptr;

    // The slot of the n-th value, counted from 1. The collection belongs to the
    // procedure named in CommandText: naming another procedure starts it anew.
    Parametro& Parameters(int n);
    // Runs the procedure with the values set so far.
    std::unique_ptr<Recordset> Execute(int opciones = -1);
    // Runs it and walks its first result once, keeping no row: `alEmpezar`
    // once the columns are known, then `porFila` for each row, each time with
    // that row as the current record of `rs`. For a screen that loads a long
    // result into a grid of its own. Later result sets are passed over.
    void ExecutePorFilas(Recordset& rs, const std::function<void()>& alEmpezar, const std::function<void()>& porFila);

private:
    // The values belong to the procedure named in CommandText: another name starts them anew.
    void parametrosDelProcedimiento();
    // The values as they go to the server, checked.
    std::vector<Parametro> valoresDeLaLlamada();
    QString textoDeLosParametros_;
    std::vector<Parametro> valores_;
};
