# Makes one text of the files of the page and a C++ source of that.
#   cmake -DPAGE=DIRECTORY -DOUTPUT=FILE.cpp -P embed_page.cmake
# The content security policy names the style and the script by their SHA-256, so the page runs nothing else.

# CMake has hashes as hexadecimal digits only; a policy wants them in base 64.
function(base64_of_hash text result)
    set(alphabet "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
    string(SHA256 digits "${text}")
    set(base64 "")
    foreach(at RANGE 0 60 6) # 24 bits are 6 digits or 4 characters; the last group has 16 bits
        string(SUBSTRING "${digits}0000" ${at} 6 group)
        foreach(shift 18 12 6 0)
            math(EXPR index "(0x${group} >> ${shift}) & 63")
            string(SUBSTRING ${alphabet} ${index} 1 character)
            string(APPEND base64 ${character})
        endforeach()
    endforeach()
    string(SUBSTRING ${base64} 0 43 base64)
    set(${result} "${base64}=" PARENT_SCOPE)
endfunction()

function(read_page_file name result)
    file(READ ${PAGE}/${name} text)
    if(text MATCHES "[^\n\t -~]|[)]page\"")
        message(FATAL_ERROR "${PAGE}/${name}: only printable ASCII, please, and no end of a raw string")
    endif()
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

read_page_file(page.html page)
read_page_file(page.css style)
set(script "\"use strict\";\n(() => {\n")
foreach(name dom model glance matrix edge history live)
    read_page_file(${name}.js part)
    string(APPEND script "${part}")
endforeach()
string(APPEND script "})();\n")

base64_of_hash("${style}" style_hash)
base64_of_hash("${script}" script_hash)
foreach(part style_hash script_hash style script)
    string(REPLACE "{{${part}}}" "${${part}}" page "${page}")
endforeach()
foreach(mark sources data)
    string(REGEX MATCHALL "{{${mark}}}" found "${page}")
    list(LENGTH found count)
    if(NOT count EQUAL 1)
        message(FATAL_ERROR "${PAGE}: {{${mark}}} must be there once, and is there ${count} times")
    endif()
endforeach()
file(WRITE ${OUTPUT} "#include \"page/page_text.h\"\n\nnamespace tool {\n"
     "const std::string_view kPageText = R\"page(${page})page\";\n}\n")
