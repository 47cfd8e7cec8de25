# vantrel_floor(NAME [BELOW floor...] [LIBRARIES lib...] [FORMS_LIBRARIES lib...])
#
# One engine library for each folder of src/, with the rooms below it, and one for its forms/ where it has
# windows. An engine library never sees Qt Widgets, and a floor only links those that BELOW names, so the linker
# keeps the border; scripts/check-floors holds the includes to it.
function(vantrel_floor name)
    cmake_parse_arguments(ARG "" "" "BELOW;LIBRARIES;FORMS_LIBRARIES" ${ARGN})
    list(TRANSFORM ARG_BELOW PREPEND vantrel_ OUTPUT_VARIABLE below)
    set(folder ${CMAKE_CURRENT_SOURCE_DIR}/${name})

    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${folder}/*.cpp)
    list(FILTER sources EXCLUDE REGEX "/forms/")
    if(sources)
        add_library(vantrel_${name} STATIC ${sources})
        target_link_libraries(vantrel_${name} PUBLIC vantrel_options ${below} ${ARG_LIBRARIES})
    else()
        add_library(vantrel_${name} INTERFACE)
        target_link_libraries(vantrel_${name} INTERFACE vantrel_options ${below} ${ARG_LIBRARIES})
    endif()

    file(GLOB forms CONFIGURE_DEPENDS ${folder}/forms/*.cpp ${folder}/forms/*.h)
    if(forms)
        set(form_floors)
        foreach(floor IN LISTS ARG_BELOW)
            if(TARGET vantrel_${floor}_forms)
                list(APPEND form_floors vantrel_${floor}_forms)
            endif()
        endforeach()
        add_library(vantrel_${name}_forms STATIC ${forms})
        set_target_properties(vantrel_${name}_forms PROPERTIES AUTOMOC ON)
        target_link_libraries(vantrel_${name}_forms PUBLIC vantrel_${name} ${form_floors} Qt6::Widgets
                              ${ARG_FORMS_LIBRARIES})
    endif()
endfunction()

# vantrel_top_floor(NAME BELOW floor...)
#
# The floor that joins the windows of all the others: one library that knows Qt Widgets throughout.
function(vantrel_top_floor name)
    cmake_parse_arguments(ARG "" "" "BELOW" ${ARGN})
    set(folder ${CMAKE_CURRENT_SOURCE_DIR}/${name})
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*.h)
    add_library(vantrel_${name} STATIC ${sources})
    set_target_properties(vantrel_${name} PROPERTIES AUTOMOC ON)
    foreach(floor IN LISTS ARG_BELOW)
        target_link_libraries(vantrel_${name} PUBLIC vantrel_${floor})
        if(TARGET vantrel_${floor}_forms)
            target_link_libraries(vantrel_${name} PUBLIC vantrel_${floor}_forms)
        endif()
    endforeach()
    target_link_libraries(vantrel_${name} PUBLIC vantrel_options Qt6::Widgets)
endfunction()
