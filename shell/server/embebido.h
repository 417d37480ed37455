#pragma once
// The embedded server: one SQLite file shared by the client processes of one
// machine, with the procedures of the database folder and the raw statements
// of the client adapted from their T-SQL text.
#include "servidor.h"

#include <QString>
#include <functional>
#include <vector>

struct sqlite3;

class ServidorEmbebido : public Servidor {
public:
    explicit ServidorEmbebido(QString archivo);
    ~ServidorEmbebido() override;

    // Creates a new database file with the schema; with the demo data set when asked.
    static void crearBase(const QString& archivo, bool conDemo);

    void abrir() override; // creates the file with demo data when it does not exist
    void cerrar() override;
    bool abierto() const override { return bd_ != nullptr; }
    bool esLocal() const override { return true; }
    Resultados procedimiento(const QString& nombre, const std::vector<Parametro>& valores) override;
    void procedimientoPorFilas(const QString& nombre, const std::vector<Parametro>& valores, Receptor& receptor) override;
    Resultados abrirConsulta(const QString& sql) override;
    void ejecutar(const QString& sql, int sentencias = 1, const VersionesEsperadas& esperadas = {}) override;

    // The columns of a table in their order, each with whether it holds numbers.
    struct ColumnaTabla {
        QString nombre;
        bool numerica;
    };
    using EsquemaTablas = std::function<std::vector<ColumnaTabla>(const QString& tabla)>;

    // The T-SQL text of a raw statement turned into SQLite statements, one per
    // element; a text of any other shape is refused with a failure. With the
    // tables' columns at hand, an empty text given as the value of a number
    // column becomes 0, as SQL Server converts it.
    static QStringList adaptar(const QString& sql, bool esConsulta, const EsquemaTablas& esquema = {});

    // The names of the procedures that this server knows.
    static QStringList procedimientos();

    // Reads and compiles a procedure of the database folder without running
    // it; a file that does not read or compile against this database fails.
    void compilar(const QString& nombre);

    // Runs a procedure given the text of its file, exactly as procedimiento()
    // runs the files of the database folder (the route for trying a procedure
    // text that is not compiled in).
    Resultados procedimientoDeTexto(const QString& nombre, const QByteArray& texto, const std::vector<Parametro>& valores);

private:
    sqlite3* conexion();

    QString archivo_;
    sqlite3* bd_ = nullptr;
};
