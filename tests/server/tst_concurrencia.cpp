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
        const QString cuenta = QStringLiteral("select count(*), coalesce(max(SECUENCIA), 0) from MOVIMIENTOS where FECHA = '%1'").arg(hoy);
        const int antes = base.valor(cuenta).toInt();
        const int ultima = base.valor(QStringLiteral("select coalesce(max(SECUENCIA), 0) from MOVIMIENTOS where FECHA = '%1'").arg(hoy)).toInt();
        constexpr int kEntradas = 15;
        QProcess uno, otro;
        for (auto [p, marca] : {std::pair{&uno, "A"}, std::pair{&otro, "B"}}) {
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
        const QString delDia = QStringLiteral(" from MOVIMIENTOS where FECHA = '%1' and obs GLOB '[AB]-*'").arg(hoy);
        QCOMPARE(base.valor("select count(*) || '/' || count(DISTINCT obs) || '/' || count(DISTINCT SECUENCIA)" + delDia),
                 QStringLiteral("%1/%1/%1").arg(2 * kEntradas));
        QCOMPARE(base.valor("select sum(obs GLOB 'A-*') || '/' || sum(obs GLOB 'B-*')" + delDia),
                 QStringLiteral("%1/%1").arg(kEntradas));
        QCOMPARE(base.valor(QStringLiteral("select count(*) || '/' || max(SECUENCIA) from MOVIMIENTOS where FECHA = '%1'").arg(hoy)),
                 QStringLiteral("%1/%2").arg(antes + 2 * kEntradas).arg(ultima + 2 * kEntradas));
    }
};

REGISTRAR_PRUEBA(PruebaConcurrencia);
#include "tst_concurrencia.moc"
