# Writes the side-by-side manifest from the IDL file, so that a host finds the classes without registration:
#
#   cmake -D IDL=kwoutil.idl -D BITS=64 -D VERSION=4.5.0.0 -D OUTPUT=KWOUtil.X.manifest -P make_manifest.cmake
#
# VERSION is the assembly's, the same for all assemblies of one release. A type library has its own; KWO_VERSION in it
# stands for the release, without its last two numbers.
#
# It reads only the attribute lists in front of library, interface, dispinterface and coclass, and stops the build when
# an identifier stands anywhere else: a class that is missing here would only be missed by a user.
cmake_minimum_required(VERSION 3.23)

file(READ "${IDL}" text)
string(REGEX REPLACE "//[^\n]*" "" text "${text}")
# Square brackets and semicolons mean something in a CMake list.
string(REPLACE ";" " " text "${text}")
string(REPLACE "[" "<" text "${text}")
string(REPLACE "]" ">" text "${text}")

set(id "[0-9A-Fa-f]+-[0-9A-Fa-f]+-[0-9A-Fa-f]+-[0-9A-Fa-f]+-[0-9A-Fa-f]+")
string(REGEX MATCHALL "uuid\\(" identifiers "${text}")
string(REGEX MATCHALL "uuid\\(${id}\\)[^{]*{" declarations "${text}")
list(LENGTH identifiers identifier_count)
list(LENGTH declarations declaration_count)
if(declaration_count EQUAL 0 OR NOT identifier_count EQUAL declaration_count)
  message(FATAL_ERROR "${IDL}: ${identifier_count} identifiers, but ${declaration_count} declarations that bear one")
endif()

set(library_name "")
set(classes "")
set(stubs "")
foreach(declaration IN LISTS declarations)
  if(NOT declaration MATCHES "^uuid\\((${id})\\)([^>]*)>[ \n]*([a-z]+ )?(library|interface|dispinterface|coclass|enum) ([A-Za-z_0-9]+)")
    message(FATAL_ERROR "${IDL}: what is this the identifier of?\n${declaration}")
  endif()
  string(TOUPPER "{${CMAKE_MATCH_1}}" guid)
  set(attributes "${CMAKE_MATCH_2}")
  set(kind ${CMAKE_MATCH_4})
  set(name ${CMAKE_MATCH_5})
  if(kind STREQUAL "library")
    if(NOT attributes MATCHES "version\\(([0-9]+\\.[0-9]+|KWO_VERSION)\\)")
      message(FATAL_ERROR "${IDL}: the library has no version")
    endif()
    set(version ${CMAKE_MATCH_1})
    if(version STREQUAL "KWO_VERSION")
      string(REGEX MATCH "^[0-9]+\\.[0-9]+" version "${VERSION}")
    endif()
    set(library_name ${name})
    set(library_guid ${guid})
  elseif(kind STREQUAL "coclass")
    string(APPEND classes
           "        <comClass clsid=\"${guid}\" progid=\"${library_name}.${name}\" threadingModel=\"Apartment\""
           " tlbid=\"${library_guid}\"/>\n")
  elseif(NOT kind STREQUAL "enum")
    # The system marshals a dual interface from its type information, one without a table only as IDispatch.
    set(stub "{00020420-0000-0000-C000-000000000046}")
    if(attributes MATCHES "oleautomation")
      set(stub "{00020424-0000-0000-C000-000000000046}")
    endif()
    string(APPEND stubs
           "    <comInterfaceExternalProxyStub name=\"${name}\" iid=\"${guid}\" tlbid=\"${library_guid}\""
           " proxyStubClsid32=\"${stub}\"/>\n")
  endif()
endforeach()
if(library_name STREQUAL "" OR classes STREQUAL "" OR stubs STREQUAL "")
  message(FATAL_ERROR "${IDL}: library, classes and interfaces are needed for a manifest")
endif()

if(BITS EQUAL 64)
  set(architecture amd64)
else()
  set(architecture x86)
endif()
file(WRITE "${OUTPUT}" "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>
<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">
    <assemblyIdentity type=\"win32\" name=\"${library_name}.X\" version=\"${VERSION}\" processorArchitecture=\"${architecture}\"/>
    <file name=\"${library_name}.dll\">
        <typelib tlbid=\"${library_guid}\" version=\"${version}\" helpdir=\"\"/>
${classes}    </file>
${stubs}</assembly>
")
