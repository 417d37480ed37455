// Another client writing to a database while the copy is taken: each
// transaction adds a row of about 2 KB and raises a tally by one, so a
// consistent copy holds as many rows as its tally says. Says "listo" after the
// first transaction and writes until it is stopped.
#include <sqlite3.h>
#include <cstdio>

int main(int argc, char** argv)
{
    sqlite3* bd = nullptr;
    if (argc < 2 || sqlite3_open(argv[1], &bd) != SQLITE_OK)
        return 1;
    sqlite3_busy_timeout(bd, 10000);
    sqlite3_exec(bd, "PRAGMA journal_mode=WAL; PRAGMA synchronous=OFF", nullptr, nullptr, nullptr);
    for (bool primera = true;; primera = false) {
        if (sqlite3_exec(bd,
                         "BEGIN IMMEDIATE; INSERT INTO escritura (relleno) VALUES (randomblob(2000));"
                         "UPDATE cuenta SET total = total + 1; COMMIT;",
                         nullptr, nullptr, nullptr) != SQLITE_OK) {
            std::fprintf(stderr, "%s\n", sqlite3_errmsg(bd));
            return 1;
        }
        if (primera) {
            std::puts("listo");
            std::fflush(stdout);
        }
    }
}
