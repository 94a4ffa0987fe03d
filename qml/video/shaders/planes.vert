#version 440

layout(location = 0) in vec4 vertex;
layout(location = 1) in vec2 textureCoordinate;
layout(location = 0) out vec2 lumaCoordinate;
layout(location = 1) out vec2 chromaCoordinate;

layout(std140, binding = 0) uniform Picture
{
    mat4 position;
    mat4 colors;
    vec4 chroma;
    vec2 crChannel;
    float opacity;
};

void main()
{
    lumaCoordinate = textureCoordinate;
    chromaCoordinate = textureCoordinate * chroma.xy + chroma.zw;
    gl_Position = position * vertex;
}
