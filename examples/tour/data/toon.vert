// Hands on the surface as the eye sees it.
varying vec3 normal;
varying vec3 seen;
varying float fog;

void main()
{
    normal = gl_NormalMatrix * gl_Normal;
    seen = vec3(gl_ModelViewMatrix * gl_Vertex);
    gl_TexCoord[0] = gl_MultiTexCoord0;
    gl_Position = ftransform();
    fog = clamp((gl_Fog.end - length(seen)) * gl_Fog.scale, 0.0, 1.0);
}
