# The Debian package: the program, its desktop entry, icon, AppStream data,
# manual page and the package's own documents, and beside it the package of
# the program's debug symbols (-dbgsym). `cpack -G DEB` in the build folder
# makes them; scripts/paquete.sh makes and checks them (docs/paquete.md).
include(GNUInstallDirs)
set(carpeta_paquete ${CMAKE_CURRENT_LIST_DIR})

set(CPACK_PACKAGE_CONTACT "Control de Pagos <soporte@controldepagos.com.ve>"
    CACHE STRING "Maintainer of the package, as Debian writes it")

install(TARGETS control-pagos RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# As Debian strips its programs: without the compilers' notes (.comment).
install(CODE "execute_process(COMMAND ${CMAKE_OBJCOPY} --remove-section=.comment
                              \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/control-pagos\"
                              COMMAND_ERROR_IS_FATAL ANY)")
install(FILES ${carpeta_paquete}/control-pagos.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${carpeta_paquete}/iconos/control-pagos.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
foreach(lado 16 22 24 32 48 64 128 256)
  install(FILES ${carpeta_paquete}/iconos/control-pagos-${lado}.png
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${lado}x${lado}/apps RENAME control-pagos.png)
endforeach()

# What is made from the packaging's templates, in the build folder.
set(documentos ${CMAKE_BINARY_DIR}/paquete)
file(MAKE_DIRECTORY ${documentos})

# The AppStream data, for software centres; its release is this version, of
# the date of the changelog's newest entry.
file(STRINGS ${carpeta_paquete}/changelog.in firma REGEX "^ -- " LIMIT_COUNT 1)
string(REGEX REPLACE "^ -- .*  " "" firma "${firma}") # the maintainer, two blanks, the date
execute_process(COMMAND date -u -d "${firma}" +%F OUTPUT_VARIABLE FECHA_PAQUETE
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(metainfo ve.com.controldepagos.control_pagos.metainfo.xml)
configure_file(${carpeta_paquete}/${metainfo}.in ${documentos}/${metainfo} @ONLY)
install(FILES ${documentos}/${metainfo} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

# Documents as Debian wants them: compressed with no time stamp inside.
configure_file(${carpeta_paquete}/changelog.in ${documentos}/changelog @ONLY)
configure_file(${carpeta_paquete}/control-pagos.1.in ${documentos}/control-pagos.1 @ONLY)
foreach(doc changelog control-pagos.1)
  execute_process(COMMAND gzip -9nf ${documentos}/${doc})
endforeach()
install(FILES ${documentos}/changelog.gz ${carpeta_paquete}/copyright
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/control-pagos)
install(FILES ${documentos}/control-pagos.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
# What lintian reports of the package and is so on purpose, with the reason.
install(FILES ${carpeta_paquete}/lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
        RENAME control-pagos)
# The administrator's script that makes or brings up to date the SQL Server database.
install(FILES ${DESPLIEGUE_SQL} DESTINATION ${CMAKE_INSTALL_DATADIR}/control-pagos)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME control-pagos)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Control de Pagos")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "registro, pago y recibos de las remesas de una casa de cambio")
set(CPACK_PACKAGE_DESCRIPTION
    "Cliente de escritorio de la casa de cambio: los operadores registran cada\n\
remesa que llega por los servicios de billetera o USDT, la completan y pagan\n\
en bolívares desde las consolas, imprimen los recibos en PDF y leen las\n\
estadísticas del día y del mes. Trabaja con la base de datos incorporada\n\
(SQLite, con una copia diaria) o con SQL Server por ODBC (FreeTDS).")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
# The debug symbols leave the program for the package control-pagos-dbgsym
# (a .ddeb beside the .deb), under /usr/lib/debug/.build-id, where gdb finds
# them by the program's build id.
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)
set(CPACK_POST_BUILD_SCRIPTS ${carpeta_paquete}/simbolos.cmake)
# One source for both, so that lintian reads them as one.
set(CPACK_DEBIAN_PACKAGE_SOURCE control-pagos)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The libraries it links come from dpkg-shlibdeps; these it only loads at run
# time: the X platform plugin, Qt's ODBC driver with unixODBC and FreeTDS's
# driver, Qt's Spanish texts of its standard dialogs, and the faces of the
# screens: DejaVu Sans and Sans Mono (core), the console grid's DejaVu Sans
# Condensed (extra).
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "qt6-qpa-plugins, libqt6sql6-odbc, unixodbc, tdsodbc, qt6-translations-l10n, fonts-dejavu-core, fonts-dejavu-extra")
include(CPack)

# The README's screenshots (scripts/capturas.sh); not part of the package.
add_executable(capturas ${CMAKE_CURRENT_LIST_DIR}/capturas/capturas.cpp)
target_link_libraries(capturas PRIVATE app_lib Qt6::Test)
target_compile_definitions(capturas PRIVATE ICONO="${CMAKE_CURRENT_LIST_DIR}/iconos/control-pagos-256.png")
