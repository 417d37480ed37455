#pragma once
// The production server: Microsoft SQL Server through unixODBC and FreeTDS.
#include "servidor.h"

#include <QString>

struct DatosSqlServer {
    QString servidor; // host name or address
    int puerto = 1433;
    QString base = QStringLiteral("RAMIL");
    QString usuario = QStringLiteral("TRUMIN");
    QString clave;
    int segundosConexion = 10; // login time-out: a dead server must not hang the start
};

class ServidorSqlServer : public Servidor {
public:
    explicit ServidorSqlServer(DatosSqlServer datos);
    ~ServidorSqlServer() override;

    // The ODBC connection text handed to the FreeTDS driver.
    static QString textoOdbc(const DatosSqlServer& datos);

    void abrir() override;
    void cerrar() override;
    bool abierto() const override;
    bool esLocal() const override { return false; }
    Resultados procedimiento(const QString& nombre, const std::vector<Parametro>& valores) override;
    Resultados abrirConsulta(const QString& sql) override;
    void ejecutar(const QString& sql, int sentencias = 1, const VersionesEsperadas& esperadas = {}) override;

private:
    // A raw text that the guard passed, with the time limit of every call.
    Resultados correrTexto(const QString& sql);
    // Inside the batch's transaction: the rows that are no longer at the version expected.
    void comprobarVersiones(const VersionesEsperadas& esperadas);

    DatosSqlServer datos_;
    QString nombreConexion_;
};
