// Lifts the sheet a little, and hands on where it is in the world.
uniform float time;  // seconds
uniform vec3 eye;    // the camera, in the world
varying vec3 place;
varying float fog;

void main()
{
    vec4 seen = gl_ModelViewMatrix * gl_Vertex;
    // The sheet goes with the camera, so its place in the world is worked out from what is seen.
    place = eye + vec3(dot(gl_ModelViewMatrix[0].xyz, seen.xyz), dot(gl_ModelViewMatrix[1].xyz, seen.xyz),
                       dot(gl_ModelViewMatrix[2].xyz, seen.xyz));
    float swell = 0.14 * sin(0.11 * place.x + 0.9 * time) + 0.12 * sin(0.13 * place.z - 0.7 * time);
    gl_Position = gl_ModelViewProjectionMatrix * (gl_Vertex + vec4(0.0, swell, 0.0, 0.0));
    fog = clamp((gl_Fog.end - length(seen.xyz)) * gl_Fog.scale, 0.0, 1.0);
}
