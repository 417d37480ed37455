// Display patterns: the cells, footers and fields of every screen go through
// Format, and the saving of a console reads those texts back as numbers.
#include "celdas.h"
#include "fallo.h"
#include "formato.h"
#include "numeros.h"
#include "prueba.h"
#include "valor.h"

class PruebaFormato : public QObject {
    Q_OBJECT

private slots:
    // The cases one a line.
    // clang-format off
    void patrones_data()
    {
        QTest::addColumn<double>("valor");
        QTest::addColumn<QString>("patron");
        QTest::addColumn<QString>("esperado");

        // Amounts with thousands marks and decimal comma.
        QTest::newRow("miles") << 1234.5 << "###,##0.00" << "1.234,50";
        QTest::newRow("grupos mas alla de los lugares") << 1234567890.0 << "#,##0.00" << "1.234.567.890,00";
        QTest::newRow("pie de recibido") << 0.0 << "#,###,##0.00" << "0,00";
        QTest::newRow("sin miles") << 1234.5 << "###0.00" << "1234,50";
        QTest::newRow("tasa con miles") << 1234.56789 << "#,##0.0000" << "1.234,5679";
        // Whole figures: "###,###" writes nothing for zero, "###0" a zero.
        QTest::newRow("###,### de cero") << 0.0 << "###,###" << "";
        QTest::newRow("###,### de miles") << 1234567.0 << "###,###" << "1.234.567";
        QTest::newRow("###,### redondea") << 999.5 << "###,###" << "1.000";
        QTest::newRow("###,### de menos de medio") << 0.4 << "###,###" << "";
        QTest::newRow("###0 de cero") << 0.0 << "###0" << "0";
        QTest::newRow("###,##0 de cero") << 0.0 << "###,##0" << "0";
        // Codes padded with zeros, and more digits than places.
        QTest::newRow("0000") << 12.0 << "0000" << "0012";
        QTest::newRow("0000 desborda") << 123456.0 << "0000" << "123456";
        QTest::newRow("000 de cero") << 0.0 << "000" << "000";
        // Literals stand at their places; extra digits go to the leftmost place.
        QTest::newRow("000-00") << 12345.0 << "000-00" << "123-45";
        QTest::newRow("000-00 corto") << 7.0 << "000-00" << "000-07";
        QTest::newRow("000-00 largo") << 1234567.0 << "000-00" << "12345-67";
        QTest::newRow("literal entre comillas") << 5.0 << "\"Bs \"0.00" << "Bs 5,00";
        // No integer places forced: a value under one starts with the comma.
        QTest::newRow("###.00 de medio") << 0.5 << "###.00" << ",50";
        QTest::newRow("###,###.00 de cero") << 0.0 << "###,###.00" << ",00";
        QTest::newRow("####.00") << 125.0 << "####.00" << "125,00";
        QTest::newRow("decimales opcionales") << 2.5 << "0.0#" << "2,5";
        QTest::newRow("decimales opcionales llenos") << 2.567 << "0.0#" << "2,57";
        // Half away from zero, on the decimal digits an operator sees.
        QTest::newRow("0,125") << 0.125 << "0.00" << "0,13";
        QTest::newRow("-0,125") << -0.125 << "0.00" << "-0,13";
        QTest::newRow("2,5 entero") << 2.5 << "0" << "3";
        QTest::newRow("-2,5 entero") << -2.5 << "0" << "-3";
        QTest::newRow("1,005") << 1.005 << "0.00" << "1,01";
        QTest::newRow("acarreo") << 9.995 << "0.00" << "10,00";
        QTest::newRow("acarreo con miles") << 999999.996 << "###,##0.00" << "1.000.000,00";
        QTest::newRow("medio en el primer digito") << 0.005 << "0.00" << "0,01";
        QTest::newRow("por debajo de medio") << 0.004 << "0.00" << "0,00";
        // Negatives: a leading sign, none when the value rounds to zero.
        QTest::newRow("negativo con miles") << -1234.5 << "###,##0.00" << "-1.234,50";
        QTest::newRow("negativo con literal") << -12345.0 << "000-00" << "-123-45";
        QTest::newRow("negativo bajo uno") << -0.5 << "###.00" << "-,50";
        QTest::newRow("negativo que redondea a cero") << -0.001 << "0.00" << "0,00";
        // Large and small magnitudes.
        QTest::newRow("mas de quince digitos") << 1e20 << "0" << "100000000000000000000";
        QTest::newRow("muy pequeno") << 1e-9 << "0.00" << "0,00";
    }
    // clang-format on
    void patrones()
    {
        QFETCH(double, valor);
        QFETCH(QString, patron);
        QFETCH(QString, esperado);
        QCOMPARE(Format(valor, patron), esperado);
        // The compiled pattern gives the same as the cached one.
        QCOMPARE(FormatoNumero(patron).aplicar(valor), esperado);
    }

    // Other values than a double: whole numbers, texts in the business's form
    // (any other text stands as it is), "&" passing a text as it stands and
    // writing a number as the run-time writes it, fields and cells.
    void otrosTiposDeValor()
    {
        const std::pair<QString, const char*> casos[] = {
            {Format(7, "0000"), "0007"},
            {Format(qint64(1234567), "###,###"), "1.234.567"},
            {Format(float(12.5), "##0.00"), "12,50"},
            {Format(QStringLiteral("1.234,5"), "###0.00"), "1234,50"},
            {Format(QStringLiteral("12,5"), "##0.00"), "12,50"},
            {Format(QStringLiteral(" 7 "), "0000"), "0007"},
            {Format("36,12345", "##0.0000"), "36,1235"},
            {Format(QStringLiteral("BANESCO"), "0000"), "BANESCO"},
            {Format(QStringLiteral("12/05/2024"), "###,##0.00"), "12/05/2024"},
            {Format(QStringLiteral("1,2,3"), "0.00"), "1,2,3"},
            {Format(QString(), "###,##0.00"), ""},
            {Format(QStringLiteral("  Pérez, Ana "), "&"), "  Pérez, Ana "},
            {Format(QStringLiteral("1.234,50"), "&"), "1.234,50"},
            {Format(94.3, "&"), "94,3"},
            {Format(1234.0, "&"), "1234"},
            {Format(2.5, ""), "2,5"},
            {Format(Valor(int64_t(42)), "0000"), "0042"},
            {Format(Valor(1234.5), "###,##0.00"), "1.234,50"},
            {Format(Valor(QStringLiteral("3")), "00"), "03"},
            {Format(Valor(QStringLiteral("BANCO")), "00"), "BANCO"},
            {Format(Valor(), "###,##0.00"), ""},
            {Format(Valor(QStringLiteral("José")), "&"), "José"},
            // a cell read back and formatted anew, as the rate screens do
            {Format(Celda(QStringLiteral("36,12")), "###.00"), "36,12"},
            {Format(Celda(36.125), "###.00"), "36,13"},
            {Format(Celda(), "0.00"), "0,00"},
            {Format(Celda(QStringLiteral("n/d")), "0.00"), "n/d"},
        };
        for (const auto& [dado, esperado] : casos)
            QCOMPARE(dado, QString::fromUtf8(esperado));
        QVERIFY(FormatoNumero(QStringLiteral("&")).esDeTexto());
        QVERIFY(!FormatoNumero(QStringLiteral("###,###")).esDeTexto());
    }

    void lecturaYCacheDePatrones()
    {
        // What a cell shows is read back to the same amount by the saving.
        for (double v : {0.0, 0.01, 12.5, 999.99, 1234.56, 98765432.1, -4321.09}) {
            const QString t = Format(v, "###,##0.00");
            QCOMPARE(Numeros::CDbl(t), v);
        }
        // More patterns than the cache holds: each one still gives its own result.
        for (int vuelta = 0; vuelta < 3; ++vuelta)
            for (int ceros = 1; ceros <= 24; ++ceros)
                QCOMPARE(Format(5.0, QString(ceros, QLatin1Char('0'))).size(), ceros);
    }
};

REGISTRAR_PRUEBA(PruebaFormato);
#include "tst_formato.moc"
