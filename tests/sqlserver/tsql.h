#pragma once
// A real T-SQL server for the tests of the production backend: started in a
// temporary folder on a free loopback port, the login TRUMIN made, the
// deployment script run on it, and the rows of a new embedded demo database
// (the twin) copied into RAMIL. One server serves the whole test program.
#include "base_temporal.h"
#include "servidor.h"

#include <QStringList>
#include <QTemporaryDir>
#include <memory>
#include <utility>
#include <vector>

class ServidorTsql {
public:
    // The program's server, started on the first call; null when it did not
    // start, and motivo() says why: omitido() when it is not on this machine
    // (the tests are skipped), a failure otherwise.
    static ServidorTsql* instancia();
    static QString motivo();
    static bool omitido();
    static void terminar(); // stops the server, when one was started

    ~ServidorTsql();

    quint16 puerto() const { return puerto_; }
    // The connection string of the program's production path: FreeTDS, user TRUMIN.
    QString cadenaTrumin() const;
    // The password of TRUMIN, as a deployment's settings file holds it.
    static QString claveTrumin();

    // A backend of the program on each server, opened: the production one as
    // TRUMIN, and the embedded one on the twin file holding the same rows.
    std::unique_ptr<Servidor> sqlServer() const;
    std::unique_ptr<Servidor> embebido() const;
    BaseTemporal& gemelo() { return *gemelo_; }

    // T-SQL run as the server's administrator in RAMIL (any statement, no
    // guard); the failure's text, empty when every batch went through.
    QString admin(const QString& sql) const;
    // The rows of an administrator's select, each as its values' text.
    QList<QStringList> filas(const QString& sql) const;

    // Runs the deployment script batch by batch; the failures, one line each.
    QStringList desplegar() const;
    // Replaces every row of RAMIL with the rows of an embedded database file.
    void copiarDe(const QString& archivo) const;

    // A table's rows on each server, as comparable lines ordered by the given
    // columns: numbers to 12 significant digits, moments as dd/mm/yyyy hh:mm:ss.
    QStringList tablaSqlServer(const QString& tabla, const QString& orden) const;
    static QStringList tablaEmbebida(const QString& archivo, const QString& tabla, const QString& orden);

    // Every table of RAMIL with the columns that order its rows.
    static const std::vector<std::pair<QString, QString>>& tablas();

    // Seconds the start, the two deployments and the copy of the demo took.
    double segundosDePreparacion() const { return segundos_; }

private:
    ServidorTsql() = default;
    bool arrancar(QString& fallo);

    QTemporaryDir dir_ {QStringLiteral("/tmp/control-pagos-tsql-XXXXXX")};
    QString carpetaDatos_;
    quint16 puerto_ = 0;
    QString conexionAdmin_;
    std::unique_ptr<BaseTemporal> gemelo_;
    double segundos_ = 0;
};

// One value as the screens would read it, for comparing the two servers.
QString comparable(const Valor& v);
// Every difference between two servers' answers to one call, one line each.
QStringList diferencias(const Resultados& embebido, const Resultados& sqlServer);
