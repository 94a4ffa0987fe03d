#version 440

layout(location = 0) in vec2 lumaCoordinate;
layout(location = 1) in vec2 chromaCoordinate;
layout(location = 0) out vec4 color;

layout(std140, binding = 0) uniform Picture
{
    mat4 position;
    mat4 colors;
    vec4 chroma;
    vec2 crChannel;
    float opacity;
};

layout(binding = 1) uniform sampler2D luma;
layout(binding = 2) uniform sampler2D cb;
layout(binding = 3) uniform sampler2D cr;

void main()
{
    vec4 sampled = vec4(texture(luma, lumaCoordinate).r, texture(cb, chromaCoordinate).r,
                        dot(texture(cr, chromaCoordinate).rg, crChannel), 1.0);
    color = vec4(clamp((colors * sampled).rgb, 0.0, 1.0), 1.0) * opacity;
}
