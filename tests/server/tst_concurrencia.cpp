// Two counters at once: two entry screens, each in a process of its own, on one
// database file, entering on the same date with typing pauses. Every entry is
// stored, each under a sequence of its own, and neither screen ends.
#include "base_temporal.h"
#include "prueba.h"

#include <QProcess>

class PruebaConcurrencia : public QObject {
    Q_OBJECT
private slots:
    void dosPantallasDeEntradaEnDosProcesos()
    {
        BaseTemporal base(true);
        const QString hoy = QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
        const QString delDia =
            QStringLiteral("select count(*) || '/' || coalesce(max(SECUENCIA), 0) from MOVIMIENTOS where FECHA = '%1'").arg(hoy);
        const QStringList antes = base.valor(delDia).split('/');
        constexpr int kEntradas = 15;
        QProcess uno, otro;
        for (auto [p, marca] : {std::pair {&uno, "A"}, std::pair {&otro, "B"}}) {
            p->setProcessChannelMode(QProcess::MergedChannels);
            p->start(QStringLiteral(OPERADOR_DE_ENTRADA),
                     {base.archivo(), QString::number(kEntradas), QLatin1String(marca), QStringLiteral("20")});
        }
        for (QProcess* p : {&uno, &otro}) {
            QVERIFY(p->waitForFinished(120000));
            const QByteArray salida = p->readAll();
            QVERIFY2(p->exitStatus() == QProcess::NormalExit && p->exitCode() == 0, salida.constData());
            QVERIFY2(salida.contains("guardadas 15"), salida.constData());
        }
        // Both screens' entries, each once, under as many keys; the numbers of
        // the day run on without a gap.
        QCOMPARE(base.valor("select count(*) || '/' || count(DISTINCT obs) || '/' || count(DISTINCT SECUENCIA) || '/' || "
                            "sum(obs GLOB 'A-*') || '/' || sum(obs GLOB 'B-*') from MOVIMIENTOS where FECHA = '" +
                            hoy + "' and obs GLOB '[AB]-*'"),
                 QStringLiteral("%1/%1/%1/%2/%2").arg(2 * kEntradas).arg(kEntradas));
        QCOMPARE(base.valor(delDia),
                 QStringLiteral("%1/%2").arg(antes[0].toInt() + 2 * kEntradas).arg(antes[1].toInt() + 2 * kEntradas));
    }
};

REGISTRAR_PRUEBA(PruebaConcurrencia);
#include "tst_concurrencia.moc"
