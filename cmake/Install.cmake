# cmake --install and the packages made from it (make package: a .deb; make package-windows:
# a zip of the cross-built kesto-batch.exe). The programs stand together in one folder, where
# kesto-batch finds kesto-picture beside itself.
include(GNUInstallDirs)
# cmake --install and cpack take what the build made; they never start a build of their own
# (make package builds first; a package test must not rebuild the folder it runs in).
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
# Folders of a package as Debian wants them, whatever the umask of the build.
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
    GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(KESTO_PACKAGE_MAINTAINER "The Kesto developers <kesto@example.org>"
    CACHE STRING "Maintainer of the Debian package")

if(WIN32)
  # A folder to unpack anywhere: the programs at its top, the sample beside them.
  set(kesto_bin_dir .)
  set(kesto_examples_dir examples)
else()
  set(kesto_bin_dir ${CMAKE_INSTALL_BINDIR})
  set(kesto_examples_dir ${CMAKE_INSTALL_DATADIR}/kesto/examples)
endif()

set(kesto_programs kesto-batch)
if(KESTO_WITH_UI)
  list(APPEND kesto_programs kesto kesto-picture)
endif()
install(TARGETS ${kesto_programs} RUNTIME DESTINATION ${kesto_bin_dir})
# The sample installation with its empty out/ folder, which the job's results need.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/install DESTINATION ${kesto_examples_dir}
        PATTERN .gitkeep EXCLUDE)

if(WIN32)
  configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/README.txt.in
                 ${CMAKE_BINARY_DIR}/packaging/README.txt @ONLY NEWLINE_STYLE CRLF)
  install(FILES ${CMAKE_BINARY_DIR}/packaging/README.txt DESTINATION .)
else()
  # The manual pages, written once in man/, and the package's changelog, their version filled
  # in and compressed as Debian ships them (gzip -n: no name or time stamp inside).
  set(linux_dir ${PROJECT_SOURCE_DIR}/packaging/linux)
  string(TIMESTAMP KESTO_PACKAGE_DATE "%a, %d %b %Y 00:00:00 +0000" UTC)
  set(kesto_man_pages kesto-batch)
  if(KESTO_WITH_UI)
    list(APPEND kesto_man_pages kesto kesto-picture)
  endif()
  set(kesto_texts ${linux_dir}/changelog.in)
  foreach(page ${kesto_man_pages})
    list(APPEND kesto_texts ${PROJECT_SOURCE_DIR}/man/${page}.1.in)
  endforeach()
  set(kesto_compressed "")
  foreach(text ${kesto_texts})
    get_filename_component(name ${text} NAME_WLE)
    set(filled ${CMAKE_BINARY_DIR}/packaging/${name})
    configure_file(${text} ${filled} @ONLY)
    add_custom_command(OUTPUT ${filled}.gz COMMAND gzip -9nfk ${filled} DEPENDS ${filled}
                       COMMENT "Compressing ${name}")
    list(APPEND kesto_compressed ${filled}.gz)
  endforeach()
  add_custom_target(kesto-docs ALL DEPENDS ${kesto_compressed})
  list(POP_FRONT kesto_compressed changelog)
  install(FILES ${kesto_compressed} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES ${changelog} ${linux_dir}/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/kesto)

  if(KESTO_WITH_UI)
    install(FILES ${linux_dir}/org.kesto.Kesto.desktop
            DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
    install(FILES ${linux_dir}/org.kesto.Kesto.metainfo.xml
            DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
    set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
    install(FILES ${PROJECT_SOURCE_DIR}/src/resources/kesto.png DESTINATION ${icons}/32x32/apps)
    install(FILES ${linux_dir}/kesto.svg DESTINATION ${icons}/scalable/apps)
  endif()
endif()

# The package: what it is, who keeps it; its dependencies worked out from the programs.
set(CPACK_PACKAGE_NAME kesto)
set(CPACK_PACKAGE_VENDOR "The Kesto developers")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "sorts the finished parts of a production machine onto pallets")
set(CPACK_PACKAGE_DESCRIPTION
    "Kesto sorts the finished parts of a production machine onto pallets, small
boxes and a set-aside area. A host program starts it with a job; Kesto works
out where each part goes, shows the result to the operator in one window, lets
the operator correct it and writes the result file for the machine and a
placement save file that the next run restores. kesto-batch runs the same job
without a window and draws the placement as PDF or PNG pictures.")
set(CPACK_PACKAGE_CONTACT ${KESTO_PACKAGE_MAINTAINER})
set(CPACK_STRIP_FILES ON)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME kesto-${PROJECT_VERSION}-windows-x86_64)
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_SECTION misc)
  set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  # Loaded by Qt at run time, so dpkg-shlibdeps cannot see them: the display platforms
  # (xcb, offscreen) and the sample's fonts.
  set(CPACK_DEBIAN_PACKAGE_DEPENDS qt6-qpa-plugins)
  set(CPACK_DEBIAN_PACKAGE_RECOMMENDS fonts-dejavu-core)
  set(CPACK_DEBIAN_PACKAGE_SUGGESTS fonts-noto-cjk)
endif()
include(CPack)
