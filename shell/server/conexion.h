#pragma once
// The server contract of the screens: one connection, one command reused for
// every procedure call, and result sets read by column name.
#include "servidor.h"

#include <QString>
#include <memory>

class Conexion;

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
    // The current row's value of the column at that position.
    const Valor& Fields(int ordinal) const;
    long RecordCount() const;
    // Moves to the next set; false, and every later read a failure, past the last.
    bool NextRecordset();
    // The raw open of the contract: a select on the connection.
    void Open(const QString& sql, Conexion& conexion);
    bool Abierto() const { return abierto_; }
    void Close();

private:
    const ConjuntoResultados* actual() const;
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
    // reshaped by what an operator typed, and is refused.
    void Execute(const QString& sql, int sentencias = 1);
    bool EsLocal() const { return servidor_ && servidor_->esLocal(); }
    Servidor& servidor();

private:
    std::unique_ptr<Servidor> servidor_;
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

private:
    // The values belong to the procedure named in CommandText: another name starts them anew.
    void parametrosDelProcedimiento();
    QString textoDeLosParametros_;
    std::vector<Parametro> valores_;
};
