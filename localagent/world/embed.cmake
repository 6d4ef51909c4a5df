# SPDX-FileCopyrightText: The Quillfen authors
# SPDX-License-Identifier: Apache-2.0
#
# cmake -D OUT=<file.cpp> -D IN=<world.json;…> -P embed.cmake
#
# Writes a source file with the text of every world in it.
set(entries "")
foreach(file IN LISTS IN)
  cmake_path(GET file STEM name)
  file(READ ${file} text)
  string(APPEND entries "        {\"${name}\", R\"world(${text})world\"},\n")
endforeach()
file(WRITE ${OUT} "#include \"localagent/world/worlds.h\"

namespace quillfen::localagent {

const std::vector<BuiltInWorld> &builtInWorlds()
{
    static const std::vector<BuiltInWorld> worlds = {
${entries}    };
    return worlds;
}

} // namespace quillfen::localagent
")
