# Installation and the Debian package.
#
# The programs live together in one program folder, lib/qorvale, as the
# print hand-off expects: Application.ico and listpress stand beside the
# program. bin/ holds links to the commands. Nothing is ever written below
# the install prefix at run time: data and the labour library go to the
# user's folders.
include(GNUInstallDirs)

set(QORVALE_PROGRAM_DIR "${CMAKE_INSTALL_LIBDIR}/qorvale")
set(QORVALE_APP_ID "com.ostrel.Qorvale")
set(QORVALE_COMMANDS qorvale qorvale-tool velmora-suite listpress)

foreach(cmd IN LISTS QORVALE_COMMANDS)
  if(TARGET ${cmd})
    install(TARGETS ${cmd} RUNTIME DESTINATION "${QORVALE_PROGRAM_DIR}")
    # A relative link, so the package can be unpacked anywhere.
    file(RELATIVE_PATH link_target "/${CMAKE_INSTALL_BINDIR}" "/${QORVALE_PROGRAM_DIR}/${cmd}")
    install(CODE "
      file(MAKE_DIRECTORY \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
      execute_process(COMMAND \${CMAKE_COMMAND} -E create_symlink \"${link_target}\"
        \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/${cmd}\")")
  endif()
endforeach()

install(FILES "${PROJECT_SOURCE_DIR}/data/Application.ico" DESTINATION "${QORVALE_PROGRAM_DIR}")
install(FILES "${PROJECT_SOURCE_DIR}/data/${QORVALE_APP_ID}.desktop"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
foreach(size 16 24 32 48 64 128 256)
  install(FILES "${PROJECT_SOURCE_DIR}/data/icons/qorvale-${size}.png"
          DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps"
          RENAME "${QORVALE_APP_ID}.png")
endforeach()

# Debian wants the changelog compressed, with no time stamp in it.
set(changelog_gz "${PROJECT_BINARY_DIR}/changelog.gz")
add_custom_command(OUTPUT "${changelog_gz}"
  COMMAND gzip -9 -n -c "${PROJECT_SOURCE_DIR}/data/changelog" > "${changelog_gz}"
  DEPENDS "${PROJECT_SOURCE_DIR}/data/changelog")
add_custom_target(qorvale_changelog ALL DEPENDS "${changelog_gz}")
install(FILES "${PROJECT_SOURCE_DIR}/data/copyright" "${changelog_gz}"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/qorvale")

# Manual pages of the commands, compressed as Debian has them.
foreach(cmd IN LISTS QORVALE_COMMANDS)
  set(page "${PROJECT_SOURCE_DIR}/data/man/${cmd}.1")
  if(TARGET ${cmd} AND EXISTS "${page}")
    set(page_gz "${PROJECT_BINARY_DIR}/man/${cmd}.1.gz")
    add_custom_command(OUTPUT "${page_gz}"
      COMMAND ${CMAKE_COMMAND} -E make_directory "${PROJECT_BINARY_DIR}/man"
      COMMAND gzip -9 -n -c "${page}" > "${page_gz}"
      DEPENDS "${page}")
    add_custom_target(qorvale_man_${cmd} ALL DEPENDS "${page_gz}")
    install(FILES "${page_gz}" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
  endif()
endforeach()

set(CPACK_GENERATOR "DEB")
set(CPACK_PACKAGE_NAME "qorvale")
set(CPACK_PACKAGE_VENDOR "Ostrel")
set(CPACK_PACKAGE_CONTACT "Ostrel <support@ostrel.example>")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "composite unit prices of piping work for estimators")
set(CPACK_PACKAGE_DESCRIPTION
  "Qorvale keeps and computes the composite unit prices of piping work in\n\
mechanical building works: material, fittings, jointing, supports,\n\
pipefitter labour, chipping and repair and other cost, by size, detail,\n\
pipe type and system group, on a submitted side and a cost side. It works\n\
on the database of the Velmora costing suite and puts data out as CSV,\n\
clipboard text, Excel workbooks and printed sheets.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION "misc")
set(CPACK_DEBIAN_PACKAGE_PRIORITY "optional")
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://www.ostrel.example/qorvale/")
# The libraries come from the binaries; what they load at run time by name
# (the desktop plugins, the Japanese font and Qt's translation) is named.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, fonts-noto-cjk")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-translations-l10n")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/package")
include(CPack)
