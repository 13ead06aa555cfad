# Installing the UI-free libraries as a CMake package: find_package(Tabulon) gives
# Tabulon::tabulon, which carries the headers (below include/tabulon, as in src/) and
# every layer's static library.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(TABULON_INSTALL_LIBS tabulon tabulon_shell tabulon_authoring tabulon_editor tabulon_drawing tabulon_card tabulon_host)
install(TARGETS ${TABULON_INSTALL_LIBS} EXPORT TabulonTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tabulon)
target_include_directories(tabulon INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/tabulon>)
# The public headers, below src/: the headless engine, the access facade, the host
# session that makes a program measure and speak as every other, the drawing database
# they hand out, and every header these include. Internal headers (the DXF codec, the
# loader's state, generation's parts) are not installed. The package test checks that
# every header listed finds its includes among those installed.
set(TABULON_PUBLIC_HEADERS
    host/ge/qage_matrix3d.h host/ge/qage_point2d.h host/ge/qage_point3d.h host/ge/qage_scale3d.h
    host/ge/qage_tol.h host/ge/qage_vector3d.h
    host/db/qa_error_status.h host/db/qadb.h host/db/qadb_2d_polyline.h host/db/qadb_arc.h
    host/db/qadb_attribute.h host/db/qadb_attribute_data.h host/db/qadb_attribute_definition.h
    host/db/qadb_block_reference.h host/db/qadb_block_table.h host/db/qadb_block_table_record.h
    host/db/qadb_circle.h host/db/qadb_database.h host/db/qadb_dictionary.h host/db/qadb_dimension.h
    host/db/qadb_dxf_record.h host/db/qadb_ellipse.h host/db/qadb_entity.h host/db/qadb_enums.h
    host/db/qadb_extents.h host/db/qadb_generic_tables.h host/db/qadb_group.h host/db/qadb_handle.h
    host/db/qadb_hatch.h host/db/qadb_id_mapping.h host/db/qadb_layer_table.h host/db/qadb_line.h
    host/db/qadb_linetype_table.h host/db/qadb_mtext.h host/db/qadb_object.h host/db/qadb_object_arena.h
    host/db/qadb_object_id.h host/db/qadb_open.h host/db/qadb_point.h host/db/qadb_polyline.h
    host/db/qadb_regapp_table.h host/db/qadb_shared_name.h host/db/qadb_slot_table.h host/db/qadb_solid.h
    host/db/qadb_spline.h host/db/qadb_symbol_table.h host/db/qadb_symbol_table_record.h host/db/qadb_text.h
    host/db/qadb_text_measure.h host/db/qadb_text_style_table.h host/db/qadb_unknown_entity.h
    host/db/qadb_unknown_object.h host/db/qadb_xdata.h host/db/qarx_class.h
    host/gi/qagi_text_measure_hook.h
    host/ed/qaed_input.h host/ed/qaed_scripted_io.h host/ed/qaed_user_io.h
    host/ap/qa_host_session.h host/ap/qaap_doc_manager.h host/ap/qaap_document.h
    host/svc/krm_card_root.h host/svc/result.h host/svc/utf8.h
    card/table_rows.h card/table_rows_file.h
    drawing/card_engine.h
    shell/krm_host_session.h
)
# The access facade is installed as soon as it is part of the tree.
if(EXISTS ${CMAKE_SOURCE_DIR}/src/drawing/ostrelm_tabulon.h)
  list(APPEND TABULON_PUBLIC_HEADERS drawing/ostrelm_tabulon.h)
endif()
foreach(header ${TABULON_PUBLIC_HEADERS})
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${CMAKE_SOURCE_DIR}/src/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tabulon/${folder})
endforeach()
install(EXPORT TabulonTargets NAMESPACE Tabulon:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Tabulon)
configure_package_config_file(${CMAKE_SOURCE_DIR}/cmake/TabulonConfig.cmake.in
                              ${CMAKE_BINARY_DIR}/TabulonConfig.cmake
                              INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Tabulon)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/TabulonConfigVersion.cmake
                                 VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/TabulonConfig.cmake ${CMAKE_BINARY_DIR}/TabulonConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Tabulon)
