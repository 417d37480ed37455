#pragma once
// The statement guard. The screens build their raw statements by joining the
// operator's text between quotes, without escaping: a quote typed in a note
// breaks the statement, and that is how the program behaves. What must never
// happen is that typed text becomes another statement or another condition.
// So before either server runs a raw text, the guard checks it against the
// few shapes the program sends, with literal values only, and refuses anything
// else with the server's own kind of refusal (nothing reaches the server).
#include "fallo.h"

#include <QString>
#include <vector>

namespace Guardia {

// A text that the database is to keep: every character must be one of
// Windows-1252, the code page of SQL Server's text columns, which would
// otherwise keep any other one as '?' without a word (the embedded server
// would keep it, and the two books would differ). Refused before anything is
// written, as a refusal of the server, naming the first such character.
void guardable(const QString& texto);

// A raw select: the server's clock ("SELECT FECHA=GETDATE()"), a client's
// photo ("select [top 1] * from fotos where cliente = <literal>") and the
// two rate tables ("select * from dolar", "select * from dolar_NEW").
void consulta(const QString& sql);

// The key of a transaction that a statement saves or deletes, as its two
// literals read: a quoted value without its quotes, a number as written.
struct Clave {
    QString fecha;
    QString secuencia;
};

// A raw INSERT, UPDATE or delete, or a batch of them: a run of new
// transactions (28 literals each), a run of saved transactions (the
// console's assignments, keyed by FECHA and SECUENCIA equal to literals), one
// gift update of a provider keyed by C_proveedor, or one delete of a
// transaction keyed by fecha and secuencia. Each value holds what the screens
// put in its column (a number, a date, an hour, a short code, a free text), so
// that a quote typed into two values cannot turn the statement's own joining
// text into values. The screen says how many
// statements it built: a quote typed in a value can close one statement and
// start a whole new one of the same kind, and only the count shows it. Every
// quoted value must also be guardable. Gives the key of each transaction
// that the batch saves or deletes, in order.
std::vector<Clave> cambios(const QString& sql, int sentencias = 1);

} // namespace Guardia
