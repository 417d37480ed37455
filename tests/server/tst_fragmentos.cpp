// The procedure files share their filters through fragments: each include
// line gives way to its fragment, the rest of the file stays as written, and
// no include is left unresolved or a fragment unused.
#include "prueba.h"
#include "recursos_bd.h"

#include <QDir>
#include <stdexcept>

namespace {

class PruebaFragmentos : public QObject {
    Q_OBJECT

private slots:
    void unaLineaDaPasoASuFragmento()
    {
        const QMap<QString, QByteArray> fragmentos {{"filtro.sql", "-- the filter\nAND x = 1\n  AND y = 2\n"},
                                                    {"anidado.sql", "AND z = 3\n--@incluye filtro.sql\n"}};
        const auto leer = [&](const QString& nombre) {
            if (!fragmentos.contains(nombre))
                throw std::runtime_error("missing " + nombre.toStdString());
            return fragmentos[nombre];
        };
        const QByteArray sinInclusiones = "--@param @a TEXT = ''\r\nSELECT 1\r\n  -- incluye: nada\r\nFROM t;\n";
        QCOMPARE(RecursosBd::conFragmentos(sinInclusiones, leer), sinInclusiones);
        QCOMPARE(RecursosBd::conFragmentos("SELECT 1 FROM t\nWHERE 1\n    --@incluye filtro.sql\r\nORDER BY 1;", leer),
                 QByteArray("SELECT 1 FROM t\nWHERE 1\n-- the filter\nAND x = 1\n  AND y = 2\nORDER BY 1;"));
        QCOMPARE(RecursosBd::conFragmentos("--@incluye  filtro.sql  \n--@incluye filtro.sql", leer),
                 QByteArray("-- the filter\nAND x = 1\n  AND y = 2\n-- the filter\nAND x = 1\n  AND y = 2"));
        // A fragment that is not there, one that includes another (its include
        // would stay a comment) and a line that names none.
        for (const char* malo : {"WHERE 1\n--@incluye otro.sql\n", "--@incluye anidado.sql", "WHERE 1\n  --@incluye\n"})
            QVERIFY_THROWS_EXCEPTION(std::runtime_error, RecursosBd::conFragmentos(malo, leer));
    }

    // The fragments of the program: every one is included somewhere, and the
    // procedures that include them read without a failure (that they then
    // compile, and give their figures, the server's own tests show).
    void cadaFragmentoSirve()
    {
        QStringList usados;
        for (const QString& nombre : RecursosBd::procedimientos()) {
            const QByteArray texto = RecursosBd::procedimiento(nombre);
            QVERIFY2(!texto.contains("--@incluye"), qPrintable(nombre));
            RecursosBd::conFragmentos(RecursosBd::leer(QStringLiteral("procedimientos/%1.sql").arg(nombre)),
                                      [&usados](const QString& fragmento) {
                                          usados << fragmento;
                                          return QByteArray();
                                      });
        }
        usados.removeDuplicates();
        usados.sort();
        const QStringList todos = QDir(QStringLiteral(":/database/procedimientos/fragmentos"))
                                      .entryList({QStringLiteral("*.sql")}, QDir::Files, QDir::Name);
        QVERIFY(todos.size() >= 5);
        QCOMPARE(usados, todos);
    }
};

} // namespace

REGISTRAR_PRUEBA(PruebaFragmentos);
#include "tst_fragmentos.moc"
