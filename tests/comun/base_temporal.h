#pragma once
// A temporary embedded database for one test: a real SQLite file with the
// real schema and procedures, removed with the object.
#include <QString>
#include <QTemporaryDir>

class BaseTemporal {
public:
    // Without demo data the tables are empty but for what a test inserts.
    explicit BaseTemporal(bool conDemo = false);
    QString archivo() const { return archivo_; }
    QString cadenaConexion() const;
    QString carpeta() const { return dir_.path(); }
    // Runs SQL straight on the file, to lay out the rows a test needs.
    void sql(const QString& texto) const { ejecutarEn(archivo_, texto); }
    // The same on any database file (made when missing).
    static void ejecutarEn(const QString& archivo, const QString& texto);
    // One value read straight from the file.
    QString valor(const QString& consulta) const { return valorDe(archivo_, consulta); }
    // The same from any database file, opened to read only.
    static QString valorDe(const QString& archivo, const QString& consulta);

private:
    QTemporaryDir dir_;
    QString archivo_;
};
