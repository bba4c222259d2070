// Hands the fragment shader the surface as the eye sees it.
varying vec3 normal;
varying vec3 position;
varying vec3 place;

void main()
{
    normal = gl_NormalMatrix * gl_Normal;
    position = vec3(gl_ModelViewMatrix * gl_Vertex);
    place = gl_Vertex.xyz;
    gl_Position = gl_ModelViewProjectionMatrix * gl_Vertex;
}
