#pragma once

#include "level/LevelFile.h"
#include "tools/level/LevelCompiler.h"
#include "tools/level/TiledMap.h"
#include "tools/level/ToolError.h"

#include <string>
#include <vector>

namespace tarnwick {

/// A start point at (x, y), object 900 and 901.
inline const std::string waterStartText =
    R"({"id":900,"name":"","class":"waterStart","x":5,"y":-6,"point":true})";
inline const std::string cameraStartText =
    R"({"id":901,"name":"","class":"cameraStart","x":70,"y":80,"point":true})";

/// A whole map of these layers.
inline std::string mapOfLayers(const std::string& layers) {
    return R"({"type":"map","orientation":"orthogonal","infinite":false,"layers":[)" + layers + "]}";
}

inline std::string objectLayer(const std::string& name, const std::string& objects) {
    return R"({"type":"objectgroup","name":")" + name + R"(","objects":[)" + objects + "]}";
}

/// A map with both start points and one layer, "1 walls", that holds `objects`.
inline std::string mapOfObjects(const std::string& objects) {
    return mapOfLayers(objectLayer("start", waterStartText + "," + cameraStartText) + "," +
                       objectLayer("1 walls", objects));
}

/// A triangle of class polygon, object 12 "slope", at (100, 200), with more members or properties put in.
inline std::string triangleText(const std::string& members = "", const std::string& properties = "") {
    return R"({"id":12,"name":"slope","class":"polygon","x":100,"y":200,)" + members +
           R"("polygon":[{"x":0,"y":0},{"x":30,"y":10},{"x":0,"y":10}],"properties":[)" + properties + "]}";
}

inline std::string textProperty(const std::string& name, const std::string& value) {
    return R"({"name":")" + name + R"(","type":"string","value":")" + value + R"("})";
}

inline std::string numberProperty(const std::string& name, const std::string& value) {
    return R"({"name":")" + name + R"(","type":"int","value":)" + value + "}";
}

inline LevelFile compileText(const std::string& text, std::vector<std::string>& warnings) {
    return compileLevel(TiledMap::read(text), warnings);
}

/// Compiles what must compile without a warning; one of the warnings otherwise becomes the text of an error.
inline LevelFile compileText(const std::string& text) {
    std::vector<std::string> warnings;
    LevelFile level = compileText(text, warnings);
    if (!warnings.empty()) {
        throw ToolError("unexpected warning: " + warnings.front());
    }
    return level;
}

/// Why a map is refused; empty when it is not.
inline std::string refusalOf(const std::string& text) {
    std::vector<std::string> warnings;
    try {
        compileText(text, warnings);
    } catch (const ToolError& error) {
        return error.what();
    }
    return {};
}

/// The warnings of a map that compiles.
inline std::vector<std::string> warningsOf(const std::string& text) {
    std::vector<std::string> warnings;
    compileText(text, warnings);
    return warnings;
}

} // namespace tarnwick
