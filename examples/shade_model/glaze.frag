// A glaze of running bands, lit from the upper left, with a bright rim.
uniform float time; // in seconds
uniform vec3 light; // towards the light, as the eye sees it
varying vec3 normal;
varying vec3 position;
varying vec3 place;

void main()
{
    vec3 n = normalize(normal);
    vec3 towardsEye = normalize(-position);
    if (dot(n, towardsEye) < 0.0)
        n = -n;
    vec3 l = normalize(light);

    float wave = place.y * 1.6 + 0.5 * sin(place.x * 1.1 + time) + 0.35 * sin(place.z * 1.7 - time);
    float band = smoothstep(-0.25, 0.25, sin(wave * 2.0 - time * 1.5));
    vec3 glaze = mix(vec3(0.05, 0.25, 0.42), vec3(0.10, 0.56, 0.58), band);
    glaze = mix(glaze, vec3(0.90, 0.68, 0.32), smoothstep(0.55, 0.95, sin(wave * 1.0 + 0.6)));

    float diffuse = max(dot(n, l), 0.0);
    float shine = pow(max(dot(n, normalize(l + towardsEye)), 0.0), 70.0);
    float rim = pow(1.0 - max(dot(n, towardsEye), 0.0), 3.0);
    vec3 colour = glaze * (0.22 + 0.85 * diffuse) + vec3(0.9) * shine;
    colour += vec3(0.35, 0.45, 0.60) * rim;
    gl_FragColor = vec4(colour, 1.0);
}
